#include "app/cli/JsonOutput.h"
#include "app/cli/SettingsCommand.h"
#include "platform/files/Files.h"

#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace cardreel::CommandLine {

namespace {

constexpr int mostListedValues = 6;

void write(JsonOutput& json, qint64 number)
{
    json.value(number);
}

void write(JsonOutput& json, const QByteArray& bytes)
{
    json.value(QString::fromLatin1(bytes.toHex()));
}

void write(JsonOutput& json, const QString& text)
{
    json.value(text);
}

void write(JsonOutput& json, Instant date)
{
    json.value(date);
}

template<typename T>
void write(JsonOutput& json, const std::optional<T>& content)
{
    if (content)
        write(json, *content);
    else
        json.null();
}

// The same for people: signature and model are known by their hexadecimal figures.
QString shown(quint32 signature)
{
    return u"0x%1"_s.arg(signature, 8, 16, QLatin1Char('0'));
}

QString shown(quint16 model)
{
    return u"0x%1"_s.arg(model, 4, 16, QLatin1Char('0'));
}

QString shown(int number)
{
    return QString::number(number);
}

QString shown(const QByteArray& bytes)
{
    return bytes.isEmpty() ? u"-"_s : QString::fromLatin1(bytes.toHex());
}

QString shown(const QString& text)
{
    return text;
}

QString shown(Instant date)
{
    return QDateTime::fromMSecsSinceEpoch(date.time_since_epoch().count(), Qt::UTC).toString(Qt::ISODate);
}

template<typename T>
QString shown(const std::optional<T>& content)
{
    return content ? shown(*content) : u"-"_s;
}

/// Paths pass as they are, also those that aren't text.
void printRow(const char* name, const QByteArray& value)
{
    std::printf("%-22s %s\n", name, value.constData());
}

/// Which values a setting takes and what they mean.
QString valuesText(const SettingField& field, const UnitSettingViewModel& model)
{
    const int highest = field.highestValue(model);
    if (highest >= mostListedValues)
        return u"%1; 0-%2"_s.arg(field.text(model).value_or(u"?"_s)).arg(highest);
    QStringList values;
    for (int value = 0; value <= highest; ++value)
        values += u"%1=%2"_s.arg(value).arg(field.textOf(model, value).value_or(QString()));
    return values.join(u' ');
}

void printEditableSettings(quint16 modelID, const UnitSettingViewModel& model)
{
    for (const SettingField& field : settingFields()) {
        if (!field.isEditable() || field.reach(modelID) != SettingField::Reach::Saved)
            continue;
        const QString row = u"%1 (%2)"_s.arg(field.value(model)).arg(valuesText(field, model));
        printRow(field.name, row.toLocal8Bit());
    }
}

QString valueText(const SettingField& field, const UnitSettingViewModel& model)
{
    return u"%1 (%2)"_s.arg(field.value(model)).arg(field.text(model).value_or(u"?"_s));
}

void writeValue(JsonOutput& json, const SettingField& field, const UnitSettingViewModel& model)
{
    if (field.kind == SettingField::Kind::Switch)
        json.value(field.value(model) != 0);
    else
        json.value(qint64{field.value(model)});
}

} // namespace

void printSettingsJson(const SettingLoad& loaded)
{
    JsonOutput json;
    json.beginObject();
    json.member("source", loaded.source);
    for (const SettingInfoField& field : settingInfoFields()) {
        json.key(field.name);
        std::visit([&](auto member) { write(json, (*loaded.info).*member); }, field.member);
    }
    json.endObject();
}

void printSettingsTable(const SettingLoad& loaded, const UnitSettingViewModel& model)
{
    printRow("source", files::nativePath(loaded.source));
    for (const SettingInfoField& field : settingInfoFields())
        std::visit([&](auto member) { printRow(field.name, shown((*loaded.info).*member).toLocal8Bit()); },
                   field.member);
    std::puts("");
    printEditableSettings(loaded.info->modelID, model);
}

void printChangesJson(const SettingChanges& changes)
{
    JsonOutput json;
    json.beginObject();
    json.member("source", changes.loaded.source);
    json.member("target", changes.target);
    json.member("saved", changes.state == SettingChanges::State::Saved);
    json.key("changes");
    json.beginArray();
    for (const SettingField* field : changes.fields) {
        json.beginObject();
        json.member("name", QString::fromLatin1(field->name));
        json.key("before");
        if (changes.loaded.info)
            writeValue(json, *field, changes.before);
        else
            json.null();
        json.key("after");
        writeValue(json, *field, changes.after);
        json.member("reachesCard", field->reach(changes.modelID) == SettingField::Reach::Saved);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void printChangesTable(const SettingChanges& changes)
{
    for (const SettingField* field : changes.fields) {
        const QString before = changes.loaded.info ? valueText(*field, changes.before) : u"-"_s;
        const QString row = u"%1 -> %2"_s.arg(before, valueText(*field, changes.after));
        printRow(field->name, row.toLocal8Bit());
    }
    if (changes.state == SettingChanges::State::WouldBeSaved)
        printRow(QCoreApplication::translate("CommandLine", "would be written").toLocal8Bit().constData(),
                 files::nativePath(changes.target));
}

} // namespace cardreel::CommandLine
