#include "app/cli/SettingsCommand.h"

#include "app/cli/CommandLine.h"
#include "app/cli/Commands.h"
#include "platform/files/Files.h"
#include "settings/SettingSession.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

/// Answers the questions that the command's own arguments have answered already, and keeps what else is said.
class TerminalAlerts final : public AlertPresenter
{
public:
    /// The next question is one of those.
    void agreeOnce() { m_agrees = true; }
    std::optional<Alert> takeProblem() { return std::exchange(m_problem, std::nullopt); }
    const QString& notice() const { return m_notice; }

    void show(const Alert& alert, Answered answered) override
    {
        const bool isQuestion = alert.kind == Alert::Kind::Question;
        if (isQuestion && std::exchange(m_agrees, false))
            return answered(Answer::FirstButton);
        if (alert.kind == Alert::Kind::Notice)
            m_notice = alert.message;
        else
            m_problem = alert;
        answered(isQuestion ? Answer::SecondButton : Answer::FirstButton);
    }

private:
    bool m_agrees = false;
    std::optional<Alert> m_problem;
    QString m_notice;
};

QString withReason(const std::optional<Alert>& alert, const QString& reason)
{
    QStringList parts;
    if (alert)
        parts += alert->message;
    if (!reason.isEmpty())
        parts += reason;
    return parts.join(u": "_s);
}

/// What a message about loading is about.
QString sourceOrCard(const SettingLoad& loaded, const QString& root)
{
    return loaded.source.isEmpty() ? root : loaded.source;
}

int showSettings(const QString& root, const Options& options)
{
    const SettingLoad loaded = SettingStore::load(root);
    if (!loaded.info)
        return failure(sourceOrCard(loaded, root), loaded.error);
    if (options.json) {
        printSettingsJson(loaded);
        return Success;
    }
    TerminalAlerts alerts;
    UnitSettingViewController controller(alerts, nullptr, loaded.info);
    controller.viewDidLoad();
    printSettingsTable(loaded, controller.viewModel());
    return Success;
}

/// One visit to the card's settings, as the window's is, with the command line in place of the sheet.
class SettingsEdit
{
public:
    explicit SettingsEdit(const QString& root)
        : m_root(root)
        , m_session(root, m_alerts, callbacks(), SettingSession::inlineRunner())
    {
    }

    int run(const Options& options, const std::vector<SettingAssignment>& assignments)
    {
        m_session.open();
        const SettingLoad& loaded = m_session.loaded();
        const std::optional<Alert> loadProblem = m_alerts.takeProblem();
        if (!loaded.info && !options.reset)
            return failure(sourceOrCard(loaded, m_root), withReason(loadProblem, loaded.error));
        edit(options, assignments);
        if (!options.dryRun && !save())
            return failure(SettingStore::binPath(m_root), withReason(m_alerts.takeProblem(), m_session.writeError()));
        if (loadProblem)
            failure(sourceOrCard(loaded, m_root),
                    u"%1. %2"_s.arg(withReason(loadProblem, loaded.error), loadProblem->informativeText));
        tellWhatIsLost(assignments);
        print(options);
        return Success;
    }

private:
    SettingSession::Callbacks callbacks()
    {
        SettingSession::Callbacks result;
        result.finished = [this](SettingSession::Outcome outcome) { m_outcome = outcome; };
        return result;
    }

    UnitSettingViewController& controller() { return *m_session.controller(); }

    void edit(const Options& options, const std::vector<SettingAssignment>& assignments)
    {
        if (options.reset) {
            m_alerts.agreeOnce();
            controller().settingReset();
        }
        for (const SettingAssignment& assignment : assignments)
            assignment.field->setValue(controller().viewModel(), assignment.value);
    }

    /// False also when somebody else has changed the card's settings meanwhile: nobody was asked about theirs.
    bool save()
    {
        m_alerts.agreeOnce();
        controller().settingFinish();
        return m_outcome == SettingSession::Outcome::Saved;
    }

    void tellWhatIsLost(const std::vector<SettingAssignment>& assignments)
    {
        if (m_session.loaded().info && !SettingModel::isKnown(m_session.loaded().info->modelID))
            failure(m_root,
                    u"the model isn't known: only what all models have is saved, the rest of the file is lost"_s);
        for (const SettingAssignment& assignment : assignments) {
            if (assignment.field->reach(controller().settingFileInfo().modelID) != SettingField::Reach::Saved)
                failure(m_root,
                        u"%1 isn't saved to cards of this model"_s.arg(QLatin1StringView(assignment.field->name)));
        }
    }

    void print(const Options& options)
    {
        const quint16 modelID = controller().settingFileInfo().modelID;
        SettingChanges changes{.state =
                                   options.dryRun ? SettingChanges::State::WouldBeSaved : SettingChanges::State::Saved,
                               .target = SettingStore::binPath(m_root),
                               .loaded = m_session.loaded(),
                               .before = controller().initialViewModel(),
                               .after = controller().viewModel(),
                               .modelID = modelID};
        if (m_session.loaded().info) {
            changes.fields = changedSettingFields(changes.before, changes.after);
        } else {
            for (const SettingField& field : settingFields()) {
                if (field.isEditable() && field.reach(modelID) == SettingField::Reach::Saved)
                    changes.fields.push_back(&field);
            }
        }
        if (options.json)
            return printChangesJson(changes);
        printChangesTable(changes);
        if (!m_alerts.notice().isEmpty())
            std::puts(m_alerts.notice().toLocal8Bit().constData());
    }

    QString m_root;
    TerminalAlerts m_alerts;
    std::optional<SettingSession::Outcome> m_outcome;
    SettingSession m_session;
};

} // namespace

std::optional<std::vector<SettingAssignment>> settingAssignments(const QStringList& texts, QString& problem)
{
    const UnitSettingViewModel model;
    std::vector<SettingAssignment> assignments;
    for (const QString& text : texts) {
        const qsizetype separator = text.indexOf(u'=');
        const QString name = text.first(separator);
        const QString value = text.sliced(separator + 1);
        const SettingField* const field = settingField(name);
        if (!field || !field->isEditable()) {
            problem = (field ? u"%1 can't be changed"_s : u"there is no setting %1"_s).arg(name);
            return std::nullopt;
        }
        const std::optional<int> number = field->valueFromText(model, value);
        if (!number) {
            problem = u"%1 takes 0 to %2, not %3"_s.arg(name).arg(field->highestValue(model)).arg(value);
            return std::nullopt;
        }
        assignments.push_back({field, *number});
    }
    return assignments;
}

int cardSettings(const Options& options)
{
    const QString& cardPath = options.arguments.first();
    const bool edits = options.reset || !options.assignments.isEmpty();
    if (options.dryRun && !edits)
        return wrongUsage(u"--dry-run goes with --set or --reset"_s);
    QString problem;
    const auto assignments = settingAssignments(options.assignments, problem);
    if (!assignments)
        return wrongUsage(problem);
    if (!files::isReadableFolder(cardPath))
        return failure(cardPath, QString::fromLocal8Bit(std::strerror(errno)));
    const QString root = files::absolutePath(cardPath);
    return edits ? SettingsEdit(root).run(options, *assignments) : showSettings(root, options);
}

} // namespace cardreel::CommandLine
