#include "app/CardApplication.h"
#include "app/cli/CommandLine.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void introduce()
{
    QCoreApplication::setApplicationName(u"cardreel"_s);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(CARDREEL_VERSION));
}

/// While the toolkit starts: without a display it would explain itself at length and dump core.
void sayWhyThereIsNoWindow(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
    if (type != QtFatalMsg)
        return;
    std::fputs("cardreel: there is no display to open a window on (the commands work without: cardreel --help)\n",
               stderr);
    std::_Exit(cardreel::CommandLine::Failure);
}

} // namespace

int main(int argc, char* argv[])
{
    introduce();
    if (cardreel::CommandLine::isCommand(argc, argv)) {
        const QCoreApplication application(argc, argv);
        cardreel::setupDefaults();
        return cardreel::CommandLine::run(argc, argv);
    }

    const std::optional<QStringList> cards = cardreel::CommandLine::paths(argc, argv);
    if (!cards)
        return cardreel::CommandLine::WrongUsage;
    const QtMessageHandler usual = qInstallMessageHandler(sayWhyThereIsNoWindow);
    QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    QGuiApplication::setApplicationDisplayName(u"Cardreel"_s);
    cardreel::setupDefaults();
    cardreel::CardApplication cardApplication(application);
    cardApplication.endOnSignals();
    cardApplication.openAtStart(*cards);
    return QApplication::exec();
}
