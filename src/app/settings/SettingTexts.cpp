#include "app/settings/SettingTexts.h"

#include "platform/files/Files.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace cardreel::SettingTexts {

namespace {

struct Entry
{
    const char* field;
    const char* label;
};
struct Section
{
    const char* title;
    std::vector<Entry> entries;
};

const std::vector<Section>& sections()
{
    static const std::vector<Section> all = {
        {QT_TRANSLATE_NOOP("SettingTexts", "Recording"),
         {{"videoQuality", QT_TRANSLATE_NOOP("SettingTexts", "Video &quality")},
          {"audioRecording", QT_TRANSLATE_NOOP("SettingTexts", "&Audio recording")},
          {"sensitivityMovie", QT_TRANSLATE_NOOP("SettingTexts", "Impact sensitivity while &driving")},
          {"overwriteSaveManual", QT_TRANSLATE_NOOP("SettingTexts", "Overwrite old &manual recordings")},
          {"overwriteSaveEvent", QT_TRANSLATE_NOOP("SettingTexts", "Overwrite old &event recordings")},
          {"overwriteSaveJunction", QT_TRANSLATE_NOOP("SettingTexts", "Overwrite old &junction recordings")}}},
        {QT_TRANSLATE_NOOP("SettingTexts", "Parking"),
         {{"parkingRecording", QT_TRANSLATE_NOOP("SettingTexts", "&Parking recording")},
          {"parkingRecordingPlus", QT_TRANSLATE_NOOP("SettingTexts", "Parking recording p&lus")},
          {"parkingRecordingTime", QT_TRANSLATE_NOOP("SettingTexts", "Len&gth of parking recordings")},
          {"recordingStartTime", QT_TRANSLATE_NOOP("SettingTexts", "Parking recording &starts")},
          {"recordingEndTime", QT_TRANSLATE_NOOP("SettingTexts", "Parking recording e&nds")},
          {"sensitivityParking", QT_TRANSLATE_NOOP("SettingTexts", "Impact sensitivity while par&ked")},
          {"overwriteSaveParking", QT_TRANSLATE_NOOP("SettingTexts", "Overwrite old park&ing recordings")}}},
        {QT_TRANSLATE_NOOP("SettingTexts", "Sound"),
         {{"notificationVolume", QT_TRANSLATE_NOOP("SettingTexts", "Notification &volume")},
          {"playbackVolume", QT_TRANSLATE_NOOP("SettingTexts", "Play&back volume")}}},
        {QT_TRANSLATE_NOOP("SettingTexts", "Display and clock"),
         {{"timeZone", QT_TRANSLATE_NOOP("SettingTexts", "&Time zone")}}},
        {QT_TRANSLATE_NOOP("SettingTexts", "System"),
         {{"childLock", QT_TRANSLATE_NOOP("SettingTexts", "C&hild lock")},
          {"batteryConnect", QT_TRANSLATE_NOOP("SettingTexts", "Batter&y connection")},
          {"isPasswordReset", QT_TRANSLATE_NOOP("SettingTexts", "Reset the pass&word")},
          {"version", QT_TRANSLATE_NOOP("SettingTexts", "Version")}}},
    };
    return all;
}

QString translated(const char* text)
{
    return QCoreApplication::translate("SettingTexts", text);
}

/// These models' files are written with zeros in all places that aren't edited here, other models' with what was read.
bool isZeroedIn(quint16 modelID)
{
    return modelID == SettingModel::model0E00 || modelID == SettingModel::model0F00;
}

} // namespace

std::vector<Group> groups()
{
    std::vector<Group> all;
    for (const Section& section : sections()) {
        Group group{translated(section.title), {}};
        for (const Entry& entry : section.entries)
            group.fields.push_back(settingField(QString::fromLatin1(entry.field)));
        all.push_back(std::move(group));
    }
    return all;
}

QString label(const SettingField& field)
{
    for (const Section& section : sections()) {
        for (const Entry& entry : section.entries) {
            if (qstrcmp(entry.field, field.name) == 0)
                return translated(entry.label);
        }
    }
    return QString::fromLatin1(field.name);
}

QString name(const SettingField& field)
{
    static const QRegularExpression writtenBehind(u"\\s*\\(&.\\)"_s); // as some languages do
    return label(field).remove(writtenBehind).remove(u'&');
}

QString value(const SettingField& field, const UnitSettingViewModel& model)
{
    const QString text = field.text(model).value_or(unknownValue(field.value(model)));
    if (field.isEditable())
        return text;
    return text.isEmpty() ? UnitSettingViewModel::unknownVersion() : files::displayPath(text);
}

QString unknownValue(int value)
{
    return QCoreApplication::translate("SettingTexts", "Unknown (%1)").arg(value);
}

QString note(const SettingField& field, quint16 modelID)
{
    const SettingField::Reach reach = field.reach(modelID);
    if (reach == SettingField::Reach::Saved || (reach == SettingField::Reach::NotSaved && !field.isEditable()))
        return {};
    if (reach == SettingField::Reach::Missing)
        return QCoreApplication::translate("SettingTexts", "This model's file has no place for it.");
    if (reach == SettingField::Reach::Dropped)
        return isZeroedIn(modelID)
                   ? QCoreApplication::translate("SettingTexts", "Isn't saved: the card gets zero, whatever is chosen.")
                   : QCoreApplication::translate("SettingTexts", "Isn't saved: this model's file has no place for it.");
    if (isZeroedIn(modelID))
        return QCoreApplication::translate("SettingTexts", "Only shown. Saving sets it to zero on the card.");
    return QCoreApplication::translate("SettingTexts", "Only shown. It stays as it is on the card.");
}

QString source(const SettingLoad& loaded)
{
    if (!loaded.info) {
        return QCoreApplication::translate("SettingTexts",
                                           "No settings could be read from the card, so these are the factory's. The "
                                           "recorder's model isn't known: only what all models have is saved.");
    }
    const QString model = QString::number(loaded.info->modelID, 16).toUpper().rightJustified(4, u'0');
    const QString file = files::nameOf(files::displayPath(loaded.source));
    QString text =
        QCoreApplication::translate("SettingTexts", "Model %1, read from %2.", "0E00, settings.bin").arg(model, file);
    if (file == files::nameOf(SettingStore::oldPath({})))
        text += u' ' + QCoreApplication::translate("SettingTexts", "That is a backup, which saving removes.");
    if (!SettingModel::isKnown(loaded.info->modelID))
        text += u' ' + QCoreApplication::translate("SettingTexts",
                                                   "The model isn't known: only what all models have is saved, and "
                                                   "the rest of the file is lost.");
    if (loaded.info->modelID == SettingModel::model1000)
        text += u' ' +
                QCoreApplication::translate("SettingTexts", "What is saved for this model can't be opened here again.");
    return text;
}

} // namespace cardreel::SettingTexts
