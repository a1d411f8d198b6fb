#include "sample-card/Options.h"

#include "sample-card/FrameNumber.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <limits>
#include <numeric>
#include <optional>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

constexpr int MOST_RECORDINGS = 100'000;
constexpr int MOST_SECONDS = 3600;

const QStringList& valueOptions()
{
    static const QStringList names = {u"recordings"_s, u"seconds"_s,      u"size"_s,         u"fps"_s,
                                      u"rear-fps"_s,   u"rear-seconds"_s, u"bitrate"_s,      u"pictures"_s,
                                      u"start"_s,      u"seed"_s,         u"missing-rear"_s, u"distinct-videos"_s,
                                      u"side-file"_s,  u"fixes"_s,        u"samples"_s};
    return names;
}

std::optional<FrameRate> frameRate(const QString& text)
{
    static const QRegularExpression pattern(u"^(\\d{1,3})(?:\\.(\\d{1,3}))?$|^(\\d{1,6})/(\\d{1,4})$"_s);
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    FrameRate rate;
    if (!match.captured(3).isEmpty()) {
        rate = {match.captured(3).toInt(), match.captured(4).toInt()};
    } else {
        const QString decimals = match.captured(2).leftJustified(3, QLatin1Char('0'));
        rate = {match.captured(1).toInt() * 1000 + decimals.toInt(), 1000};
    }
    if (rate.numerator <= 0 || rate.denominator <= 0 || rate.perSecond() < 1 || rate.perSecond() > 240)
        return std::nullopt;
    const int common = std::gcd(rate.numerator, rate.denominator);
    return FrameRate{rate.numerator / common, rate.denominator / common};
}

std::optional<QSize> frameSize(const QString& text)
{
    static const QRegularExpression pattern(u"^(\\d{1,4})x(\\d{1,4})$"_s);
    const auto match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    // Below this the frame numbers can't be read; odd sizes have no half-size colour planes.
    const bool fits = size.width() >= 160 && size.height() >= 90 && size.width() <= 7680 && size.height() <= 4320;
    return fits && size.width() % 2 == 0 && size.height() % 2 == 0 ? std::optional(size) : std::nullopt;
}

// Reads the options' values and keeps the first thing that is wrong with them.
class Reader
{
public:
    explicit Reader(const QCommandLineParser& parser_)
        : parser(parser_)
    {
    }

    int number(const QString& name, int fallback, int lowest, int highest)
    {
        if (!parser.isSet(name))
            return fallback;
        bool ok = false;
        const int value = parser.value(name).toInt(&ok);
        if (!ok || value < lowest || value > highest)
            complain(u"--%1 takes a whole number from %2 to %3, not \"%4\""_s.arg(name).arg(lowest).arg(highest).arg(
                parser.value(name)));
        return value;
    }

    template<typename Value>
    Value parsed(const QString& name, Value fallback, std::optional<Value> (*parse)(const QString&),
                 const QString& form)
    {
        if (!parser.isSet(name))
            return fallback;
        const auto value = parse(parser.value(name));
        if (!value)
            complain(u"--%1 takes %2, not \"%3\""_s.arg(name, form, parser.value(name)));
        return value.value_or(fallback);
    }

    void complain(const QString& what)
    {
        if (problem.isEmpty())
            problem = what;
    }

    QString problem;

private:
    const QCommandLineParser& parser;
};

std::optional<QDateTime> startTime(const QString& text)
{
    QDateTime start = QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_s);
    start.setTimeSpec(Qt::UTC);
    // Names have two digits for the year.
    return start.isValid() && start.date().year() >= 2000 && start.date().year() < 2099 ? std::optional(start)
                                                                                        : std::nullopt;
}

std::optional<QString> bitRate(const QString& text)
{
    static const QRegularExpression pattern(u"^[1-9]\\d{0,8}[kM]?$"_s);
    return pattern.match(text).hasMatch() ? std::optional(text) : std::nullopt;
}

std::optional<std::uint64_t> seedNumber(const QString& text)
{
    bool ok = false;
    const auto seed = text.toULongLong(&ok);
    return ok ? std::optional<std::uint64_t>(seed) : std::nullopt;
}

void readSideFileOptions(const QCommandLineParser& parser, Reader& reader, Options& options)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    options.onlySideFile = true;
    options.output = parser.value(u"side-file"_s);
    options.fixes = reader.number(u"fixes"_s, 60, 0, MOST);
    options.samples = reader.number(u"samples"_s, 600, 0, MOST);
    if (!parser.positionalArguments().isEmpty())
        reader.complain(u"--side-file makes no card: leave \"%1\" out"_s.arg(parser.positionalArguments().first()));
}

void readCardOptions(const QCommandLineParser& parser, Reader& reader, Options& options)
{
    if (parser.isSet(u"fixes"_s) || parser.isSet(u"samples"_s))
        reader.complain(u"--fixes and --samples go with --side-file"_s);
    if (parser.positionalArguments().size() != 1)
        reader.complain(u"name one folder for the card"_s);
    else
        options.output = parser.positionalArguments().first();

    options.recordings = reader.number(u"recordings"_s, options.recordings, 0, MOST_RECORDINGS);
    options.seconds = reader.number(u"seconds"_s, options.seconds, 1, MOST_SECONDS);
    options.rearSeconds = reader.number(u"rear-seconds"_s, options.seconds, 1, MOST_SECONDS);
    options.size =
        reader.parsed(u"size"_s, options.size, frameSize, u"WIDTHxHEIGHT, even numbers from 160x90 to 7680x4320"_s);
    const QString rateForm = u"frames per second from 1 to 240, as 30, 27.5 or 30000/1001"_s;
    options.rate = reader.parsed(u"fps"_s, options.rate, frameRate, rateForm);
    options.rearRate = reader.parsed(u"rear-fps"_s, options.rate, frameRate, rateForm);
    options.bitrate = reader.parsed(u"bitrate"_s, options.bitrate, bitRate, u"bits per second, as 800k or 13M"_s);
    options.missingRear = reader.number(u"missing-rear"_s, 0, 0, MOST_RECORDINGS);
    options.distinctVideos = reader.number(u"distinct-videos"_s, 0, 1, MOST_RECORDINGS);
    if (parser.isSet(u"no-rear"_s))
        options.rear = RearCamera::Missing;
    if (parser.isSet(u"no-video"_s))
        options.videos = VideoFiles::Placeholders;

    const qint64 seconds = static_cast<qint64>(options.recordings) * options.seconds;
    const int mostPictures = static_cast<int>(std::min<qint64>(seconds, MOST_RECORDINGS));
    options.pictures = reader.number(u"pictures"_s, std::min(options.pictures, mostPictures), 0, mostPictures);
    if (options.rate.framesIn(options.seconds) > FRAME_NUMBER_LIMIT ||
        options.rearRate.framesIn(options.rearSeconds) > FRAME_NUMBER_LIMIT)
        reader.complain(u"a video holds at most %1 frames, as many as can be numbered"_s.arg(FRAME_NUMBER_LIMIT));
}

} // namespace

int FrameRate::framesIn(int seconds) const
{
    const qint64 frames = (static_cast<qint64>(seconds) * numerator + denominator / 2) / denominator;
    return static_cast<int>(std::max<qint64>(1, frames));
}

ParsedOptions parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.addOption({{u"h"_s, u"help"_s}, {}});
    parser.addOption({u"no-rear"_s, {}});
    parser.addOption({u"no-video"_s, {}});
    for (const QString& name : valueOptions())
        parser.addOption({name, {}, u"value"_s});
    if (!parser.parse(arguments))
        return WrongUsage{parser.errorText()};
    if (parser.isSet(u"help"_s))
        return HelpWanted{};

    Options options;
    Reader reader(parser);
    options.start = reader.parsed(u"start"_s, *startTime(u"2025-06-14 08:03:14"_s), startTime,
                                  u"\"YYYY-MM-DD hh:mm:ss\" between the years 2000 and 2098"_s);
    options.seed = reader.parsed(u"seed"_s, options.seed, seedNumber, u"a whole number from 0"_s);
    if (parser.isSet(u"side-file"_s))
        readSideFileOptions(parser, reader, options);
    else
        readCardOptions(parser, reader, options);
    if (reader.problem.isEmpty() && options.output.isEmpty())
        reader.complain(u"the name of what to make is empty"_s);
    if (!reader.problem.isEmpty())
        return WrongUsage{reader.problem};
    return options;
}

QString helpText()
{
    return uR"(sample-card - makes a drive recorder's memory card to try things with

usage: sample-card [OPTION...] OUT
       sample-card --side-file FILE [--fixes N] [--samples N] [OPTION...]

Makes the folder OUT as a recorder fills its card: front and rear videos of a drive on two days, with their telemetry,
pictures and the recorder's settings. Every video frame carries its number as a row of black and white blocks. OUT must
not exist, or be empty; it appears only when it is complete (it grows as OUT.partial). Videos need the program ffmpeg.

What is on the card:
  --recordings N           recordings, spread over NORMAL, EVENT, MANUAL and PARKING (default 9)
  --seconds S              length of each (default 20)
  --pictures N             pictures (default 6; every other one with a rear twin)
  --start "YYYY-MM-DD hh:mm:ss"
                           the recorder's clock at the first recording (default 2025-06-14 08:03:14)
  --seed N                 another drive; the same seed makes the same card (default 1)

How the videos are:
  --size WxH               frame size, even numbers (default 1280x720)
  --fps F                  frames per second, as 30, 27.5 or 30000/1001 (default 30)
  --bitrate B              video bits per second, as 800k or 13M (default 3M)
  --rear-fps F             the rear videos' own frame rate (default: as in front)
  --rear-seconds S         the rear videos' own length (default: as in front)
  --no-rear                no rear camera
  --missing-rear N         the last N recordings have no rear video
  --distinct-videos N      encode only the first N recordings' videos and copy them for the others, for big cards;
                           the telemetry stays different
  --no-video               files of a few bytes instead of videos, without ffmpeg

Instead of a card:
  --side-file FILE         writes one telemetry file, replacing FILE, with
  --fixes N                this many fixes, one a second (default 60), and
  --samples N              this many acceleration samples, spread evenly over them (default 600)

  --help                   shows this

Exit status: 0 when done; 1 when something failed, with one line that says what; 2 for wrong usage.
)"_s;
}

} // namespace cardreel
