#include "media/CardLayout.h"

#include "names/ConstClass.h"
#include "platform/files/Files.h"
#include "platform/text/DateText.h"
#include "platform/text/Pattern.h"

#include <QLoggingCategory>

#include <charconv>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

Q_LOGGING_CATEGORY(logCardLayout, "cardreel.media.layout", QtInfoMsg)

bool anyNameMatches(const QString& rootPath, const QString& folderPattern)
{
    Pattern pattern(folderPattern);
    for (const QString& name : files::names(rootPath)) {
        if (pattern.matchesWhole(name))
            return true;
    }
    return false;
}

/// Two digits of a name as a number; -1 when they aren't digits.
int twoDigits(const QString& text, qsizetype at)
{
    const int tens = text[at].unicode() - u'0';
    const int ones = text[at + 1].unicode() - u'0';
    return tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9 ? tens * 10 + ones : -1;
}

} // namespace

bool CardLayout::fullMatchResultWithTarget(const QString& target, const QString& regexPattern)
{
    return Pattern(regexPattern).matchesWhole(target);
}

bool CardLayout::mediaIsDCF(const QString& /*rootPath*/)
{
    return false;
}

bool CardLayout::mediaIsLM90(const QString& rootPath)
{
    return anyNameMatches(rootPath, ConstClass::REG_LM90_FOLDER);
}

bool CardLayout::mediaIsAlter(const QString& rootPath)
{
    return anyNameMatches(rootPath, ConstClass::REG_ALTER_FOLDER);
}

bool CardLayout::mediaIsAvailable(const QString& rootPath)
{
    return mediaIsAlter(rootPath);
}

std::optional<Instant> CardLayout::dateFromJSTFileNameString(const QString& path)
{
    const QString text = u"20"_s + files::nameOf(path).section(u'.', 0, 0);
    qCInfo(logCardLayout) << text;
    return DateText::patterned(u"yyyyMMddhhmmss"_s, u"ja_JP"_s, TimeZone::Jst).instant(text);
}

QString CardLayout::dateString(Instant date)
{
    return DateText::styled(DateStyle::Short, DateStyle::Medium, TimeZone::Local).text(date);
}

std::vector<QString> CardLayout::pathsAtDirectory(const QString& folder)
{
    return files::names(folder);
}

std::vector<QString> CardLayout::fullPathsAtDirectory(const QString& folder)
{
    std::vector<QString> paths = files::names(folder);
    for (QString& path : paths)
        path = files::join(folder, path);
    return paths;
}

std::vector<QString> CardLayout::getFilesInDirectory(const QString& folder)
{
    std::vector<QString> paths;
    files::walk(folder, [&](const QString& relativePath, bool) { paths.push_back(files::join(folder, relativePath)); });
    return paths;
}

bool CardLayout::pathIsDirectory(const QString& path)
{
    return files::isFolder(path);
}

std::optional<Instant> recorderDate(const QString& path)
{
    using namespace std::chrono;
    const QString stem = files::stemOf(path);
    if (stem.size() < 12)
        return std::nullopt;
    std::array<int, 6> fields{};
    for (qsizetype i = 0; i < 6; ++i) {
        fields[static_cast<size_t>(i)] = twoDigits(stem, i * 2);
        if (fields[static_cast<size_t>(i)] < 0)
            return std::nullopt;
    }
    const auto [yearOfCentury, month, day, hour, minute, second] = fields;
    const year_month_day date(year(2000 + yearOfCentury), std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day)));
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return Instant(sys_days(date) + hours(hour) + minutes(minute) + seconds(second));
}

QString recordingDateText(const QString& path)
{
    thread_local const DateText format = DateText::styled(DateStyle::Medium, DateStyle::Medium, TimeZone::Utc);
    return format.text(recorderDate(path).value_or(now()));
}

QString eventNameOfFolder(const QString& folderName)
{
    // The numbered names are those of another generation of recorders.
    if (folderName == ConstClass::REG_LM90_FOLDER_EVENT || folderName == u"200_SHOC" || folderName == u"200_EVNT")
        return ConstClass::DCF_EVENTNAME_EVENT;
    if (folderName == ConstClass::REG_LM90_FOLDER_MANUAL || folderName == u"300_MANU")
        return ConstClass::DCF_EVENTNAME_MANUAL;
    if (folderName == ConstClass::REG_LM90_FOLDER_PARKING || folderName == u"400_PARK")
        return ConstClass::DCF_EVENTNAME_PARKING;
    return ConstClass::DCF_EVENTNAME_NORMAL;
}

std::optional<qint64> decimalInteger(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    qint64 value = 0;
    const auto [end, error] = std::from_chars(bytes.begin(), bytes.end(), value);
    if (error != std::errc() || end != bytes.end())
        return std::nullopt;
    return value;
}

} // namespace cardreel
