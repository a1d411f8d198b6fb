// What the command line asks for. Read once by main, handed down as a value.
#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <variant>

namespace cardreel {

enum class RearCamera { Fitted, Missing };
enum class VideoFiles { Encoded, Placeholders };

// Frames per second as a fraction, so that 30000/1001 stays exact.
struct FrameRate
{
    int numerator = 30;
    int denominator = 1;

    double perSecond() const { return static_cast<double>(numerator) / denominator; }
    // Frames that start before this many seconds have passed, at least one.
    int framesIn(int seconds) const;
    QString text() const { return QStringLiteral("%1/%2").arg(numerator).arg(denominator); }
};

struct Options
{
    QString output; // folder of the card, or the side file
    int recordings = 9;
    int seconds = 20;
    int rearSeconds = 20;
    QSize size{1280, 720};
    FrameRate rate;
    FrameRate rearRate;
    QString bitrate = QStringLiteral("3M");
    int pictures = 6;
    QDateTime start; // the recorder's clock, kept as UTC
    std::uint64_t seed = 1;
    RearCamera rear = RearCamera::Fitted;
    VideoFiles videos = VideoFiles::Encoded;
    int missingRear = 0;
    int distinctVideos = 0; // 0: all

    bool onlySideFile = false;
    int fixes = 0;
    int samples = 0;
};

struct HelpWanted
{
};

struct WrongUsage
{
    QString what;
};

using ParsedOptions = std::variant<Options, HelpWanted, WrongUsage>;

// `arguments` as the program got them, its own name first.
ParsedOptions parseOptions(const QStringList& arguments);

QString helpText();

} // namespace cardreel
