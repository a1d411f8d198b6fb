#include "sample-card/CardWriter.h"

#include "sample-card/FrameNumber.h"
#include "sample-card/RecorderSettings.h"
#include "sample-card/Scene.h"
#include "sample-card/SideFile.h"
#include "sample-card/StillPicture.h"
#include "sample-card/VideoEncoder.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <mutex>
#include <span>
#include <thread>
#include <utility>

namespace cardreel {

using namespace Qt::StringLiterals;

namespace {

// Marks a folder as a half-made card of this tool, which the next run may take away. Nothing else is ever removed.
const QString MARK = u".sample-card"_s;
constexpr int SKIES = 2;
constexpr unsigned FEWEST_ENCODERS = 2;
constexpr unsigned MOST_ENCODERS = 8;

constexpr std::array VIDEO_FOLDERS = {"NORMAL", "EVENT", "MANUAL", "PARKING"};

} // namespace

CardWriter::CardWriter(Options options_, ProgressReport progress_)
    : options(std::move(options_))
    , progress(std::move(progress_))
    , plan(planCard(options))
{
}

QString CardWriter::inCard(const QString& relative) const
{
    return folder + u'/' + relative;
}

QString CardWriter::videoPath(std::size_t recording, CameraSide side) const
{
    const PlannedRecording& planned = plan.recordings.at(recording);
    const QString rear = side == CameraSide::Rear ? u"REAR/"_s : QString();
    return inCard(u"%1%2/%3.MP4"_s.arg(rear, planned.folder(), planned.stem()));
}

int CardWriter::videoSeconds(CameraSide side) const
{
    return side == CameraSide::Front ? options.seconds : options.rearSeconds;
}

bool CardWriter::isEncoded(std::size_t recording) const
{
    return options.videos == VideoFiles::Encoded &&
           (options.distinctVideos == 0 || recording < static_cast<std::size_t>(options.distinctVideos));
}

Problem CardWriter::write()
{
    if (options.videos == VideoFiles::Encoded && options.recordings > 0) {
        ffmpeg = QStandardPaths::findExecutable(u"ffmpeg"_s);
        if (ffmpeg.isEmpty())
            return u"the program ffmpeg, which makes the videos, is not installed"_s;
    }
    if (auto problem = prepareFolder())
        return problem;
    auto problem = writeCard();
    if (!problem) {
        QFile::remove(inCard(MARK));
        // An empty folder of the wanted name may stand there; Qt's rename refuses what the system's allows.
        QDir().rmdir(options.output);
        if (!QDir().rename(folder, options.output))
            problem = u"can't rename %1 to %2"_s.arg(folder, options.output);
    }
    if (problem)
        QDir(folder).removeRecursively();
    return problem;
}

Problem CardWriter::prepareFolder()
{
    const QString output = QDir::cleanPath(QFileInfo(options.output).absoluteFilePath());
    const QFileInfo target(output);
    if (target.exists() && (!target.isDir() || !QDir(output).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System |
                                                                     QDir::NoDotAndDotDot)))
        return u"%1 exists and is not an empty folder"_s.arg(options.output);
    options.output = output;
    folder = output + u".partial"_s;
    if (QFileInfo::exists(folder)) {
        if (!QFileInfo::exists(inCard(MARK)))
            return u"%1 is in the way"_s.arg(folder);
        if (!QDir(folder).removeRecursively())
            return u"can't remove %1, left by a run that was cut short"_s.arg(folder);
    }
    if (auto problem = makeFolder(folder))
        return problem;
    return writeFile(inCard(MARK), {});
}

Problem CardWriter::writeCard()
{
    if (auto problem = makeFolders())
        return problem;
    const QDateTime madeAt = options.start.addDays(-1);
    const QString settings = inCard(u"SYSTEM/settings.bin"_s);
    if (auto problem = writeFile(settings, recorderSettings(madeAt)))
        return problem;
    if (auto problem = setModificationTime(settings, madeAt))
        return problem;
    prepareBackdrops();
    if (auto problem = writeDrive())
        return problem;
    if (auto problem = writeVideos())
        return problem;
    return stampVideos();
}

Problem CardWriter::makeFolders()
{
    QStringList folders = {u"PICTURE"_s, u"SYSTEM"_s};
    for (const char* const name : VIDEO_FOLDERS) {
        const QString video = QString::fromLatin1(name);
        folders << video << u"SYSTEM/NMEA/"_s + video;
        if (options.rear == RearCamera::Fitted)
            folders << u"REAR/"_s + video;
    }
    if (options.rear == RearCamera::Fitted)
        folders << u"REAR/PICTURE"_s;
    for (const QString& name : folders)
        if (auto problem = makeFolder(inCard(name)))
            return problem;
    return std::nullopt;
}

void CardWriter::prepareBackdrops()
{
    if (options.videos == VideoFiles::Placeholders && options.pictures == 0)
        return;
    for (const CameraSide side : {CameraSide::Front, CameraSide::Rear})
        for (int sky = 0; sky < SKIES; ++sky)
            backdrops[{side, sky}] = std::make_unique<SceneBackdrop>(options.size, side, sky, options.seed);
}

const SceneBackdrop& CardWriter::backdrop(CameraSide side, int trip) const
{
    return *backdrops.at({side, trip % SKIES});
}

Problem CardWriter::writeDrive()
{
    Drive drive(options.seed);
    std::size_t nextPicture = 0;
    for (std::size_t i = 0; i < plan.recordings.size(); ++i) {
        const PlannedRecording& recording = plan.recordings[i];
        if (recording.startsTrip)
            drive.park();
        DriveLog log = drive.record(recording.kind, recording.ordinal, options.seconds);
        const QDateTime end = recording.start.addSecs(options.seconds);
        const QString path = inCard(recording.sideFilePath());
        const QByteArray text = sideFile(log, recording.tripID().toLatin1(), recording.start, options.seconds);
        if (auto problem = writeFile(path, text))
            return problem;
        if (auto problem = setModificationTime(path, end))
            return problem;
        if (auto problem = writePictures(i, log, nextPicture))
            return problem;
        if (isEncoded(i))
            logs.emplace(i, std::move(log));
        progress(u"telemetry"_s, i + 1, plan.recordings.size());
    }
    return std::nullopt;
}

Problem CardWriter::writePictures(std::size_t recording, const DriveLog& log, std::size_t& nextPicture)
{
    const PlannedRecording& during = plan.recordings.at(recording);
    for (; nextPicture < plan.pictures.size() && plan.pictures[nextPicture].recording == recording; ++nextPicture) {
        const PlannedPicture& planned = plan.pictures[nextPicture];
        const QDateTime moment = during.start.addSecs(planned.second);
        for (const CameraSide side : {CameraSide::Front, CameraSide::Rear}) {
            if (side == CameraSide::Rear && !planned.hasRear)
                continue;
            QImage image(options.size, QImage::Format_RGB32);
            QPainter painter(&image);
            Scene(backdrop(side, during.trip), log, during.kind, during.start, options.size, side)
                .paint(painter, planned.second);
            painter.end();
            const QString rear = side == CameraSide::Rear ? u"REAR/"_s : QString();
            const QString path = inCard(u"%1PICTURE/%2.JPG"_s.arg(rear, recorderStem(moment)));
            if (auto problem = writeStillPicture(path, image, log.at(planned.second), moment))
                return problem;
            if (auto problem = setModificationTime(path, moment))
                return problem;
            if (planned.isProtected && side == CameraSide::Front)
                if (auto problem = protectFile(path))
                    return problem;
        }
    }
    return std::nullopt;
}

Problem CardWriter::writeVideos()
{
    std::vector<VideoJob> encoded;
    std::vector<VideoJob> others;
    for (std::size_t i = 0; i < plan.recordings.size(); ++i)
        for (const CameraSide side : {CameraSide::Front, CameraSide::Rear}) {
            if (side == CameraSide::Front || plan.recordings[i].hasRear)
                (isEncoded(i) ? encoded : others).push_back({i, side, videoPath(i, side)});
        }
    if (options.videos == VideoFiles::Placeholders)
        return writePlaceholders(others);
    if (auto problem = encodeAll(encoded))
        return problem;
    return copyVideos(others);
}

Problem CardWriter::encodeAll(const std::vector<VideoJob>& jobs)
{
    std::mutex lock;
    std::condition_variable changed;
    std::size_t next = 0;
    std::size_t done = 0;
    unsigned working = 0;
    Problem failure;

    const auto work = [&] {
        std::unique_lock held(lock);
        while (next < jobs.size() && !failure) {
            const VideoJob& job = jobs[next++];
            held.unlock();
            auto problem = encode(job);
            held.lock();
            ++done;
            if (problem && !failure)
                failure = std::move(problem);
            changed.notify_one();
        }
        --working;
        changed.notify_one();
    };

    const unsigned wanted = std::clamp(std::thread::hardware_concurrency(), FEWEST_ENCODERS, MOST_ENCODERS);
    working = std::min(wanted, static_cast<unsigned>(jobs.size()));
    std::vector<std::thread> threads;
    for (unsigned i = working; i > 0; --i)
        threads.emplace_back(work);
    std::size_t shown = 0;
    std::unique_lock held(lock);
    while (shown < jobs.size()) {
        changed.wait(held, [&] { return done != shown || working == 0; });
        if (done == shown)
            break; // a failure ended the work
        shown = done;
        held.unlock();
        progress(u"videos"_s, shown, jobs.size());
        held.lock();
    }
    held.unlock();
    for (std::thread& thread : threads)
        thread.join();
    return failure;
}

Problem CardWriter::encode(const VideoJob& job) const
{
    const PlannedRecording& recording = plan.recordings.at(job.recording);
    const FrameRate rate = job.side == CameraSide::Front ? options.rate : options.rearRate;
    const int seconds = videoSeconds(job.side);
    const int frames = rate.framesIn(seconds);
    VideoEncoder encoder(ffmpeg, job.path, {options.size, rate, seconds, options.bitrate, job.side});
    if (auto problem = encoder.start())
        return problem;

    const Scene scene(backdrop(job.side, recording.trip), logs.at(job.recording), recording.kind, recording.start,
                      options.size, job.side);
    QImage image(options.size, QImage::Format_RGB32);
    for (int frame = 0; frame < frames; ++frame) {
        QPainter painter(&image);
        scene.paint(painter, frame / rate.perSecond());
        paintFrameNumber(painter, options.size, frame);
        painter.end();
        const std::span pixels(image.constBits(), static_cast<std::size_t>(image.sizeInBytes()));
        if (auto problem = encoder.write(std::as_bytes(pixels)))
            return problem;
    }
    return encoder.finish();
}

Problem CardWriter::copyVideos(const std::vector<VideoJob>& copies)
{
    for (std::size_t i = 0; i < copies.size(); ++i) {
        const VideoJob& copy = copies[i];
        const std::size_t source = copy.recording % static_cast<std::size_t>(options.distinctVideos);
        if (auto problem = copyFile(videoPath(source, copy.side), copy.path))
            return problem;
        progress(u"copies of videos"_s, i + 1, copies.size());
    }
    return std::nullopt;
}

Problem CardWriter::writePlaceholders(const std::vector<VideoJob>& jobs)
{
    // The head of an MP4 with nothing behind it: by its bytes a video, to any player a broken one.
    static const QByteArray head = QByteArray::fromHex("0000001066747970") + "mp42" + QByteArray(4, '\0');
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (auto problem = writeFile(jobs[i].path, head))
            return problem;
        progress(u"placeholders"_s, i + 1, jobs.size());
    }
    return std::nullopt;
}

// A recorder closes a file when the recording ends, which is how its place in time is known.
Problem CardWriter::stampVideos()
{
    for (std::size_t i = 0; i < plan.recordings.size(); ++i) {
        const PlannedRecording& recording = plan.recordings[i];
        for (const CameraSide side : {CameraSide::Front, CameraSide::Rear}) {
            if (side == CameraSide::Rear && !recording.hasRear)
                continue;
            const QString path = videoPath(i, side);
            if (auto problem = setModificationTime(path, recording.start.addSecs(videoSeconds(side))))
                return problem;
            if (recording.isProtected && side == CameraSide::Front)
                if (auto problem = protectFile(path))
                    return problem;
        }
    }
    return std::nullopt;
}

namespace {

Problem writeLongDrive(const Options& options, QFile& file)
{
    constexpr int CHUNK_SECONDS = 60;
    constexpr std::array KINDS = {RecordingKind::Normal, RecordingKind::Normal, RecordingKind::Event,
                                  RecordingKind::Normal, RecordingKind::Manual};
    Drive drive(options.seed);
    DriveLog log;
    QByteArray text = tripSentence("00000001");
    // Without fixes the samples still want seconds to stand in.
    const int seconds = std::max(options.fixes, options.samples > 0 ? 1 : 0);
    for (int second = 0; second < seconds; ++second) {
        const int inChunk = second % CHUNK_SECONDS;
        if (inChunk == 0) {
            if (auto problem = writeAll(file, text))
                return problem;
            text.clear();
            const int chunk = second / CHUNK_SECONDS;
            log = drive.record(KINDS.at(static_cast<std::size_t>(chunk) % KINDS.size()), chunk, CHUNK_SECONDS);
        }
        const auto first = static_cast<std::size_t>(inChunk) * SAMPLES_PER_SECOND;
        if (second < options.fixes)
            appendFix(text, log.states.at(first), options.start.addSecs(second));
        const qint64 from = qint64{options.samples} * second / seconds;
        const qint64 to = qint64{options.samples} * (second + 1) / seconds;
        for (qint64 sample = from; sample < to; ++sample)
            appendSample(text, log.states.at(first + static_cast<std::size_t>(sample - from) % SAMPLES_PER_SECOND));
    }
    return writeAll(file, text);
}

} // namespace

Problem writeSideFile(const Options& options)
{
    const QString partial = options.output + u".partial"_s;
    QFile file(partial);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return u"can't write %1: %2"_s.arg(partial, file.errorString());
    auto problem = writeLongDrive(options, file);
    file.close();
    if (!problem && ((QFile::exists(options.output) && !QFile::remove(options.output)) || !file.rename(options.output)))
        problem = u"can't rename %1 to %2"_s.arg(partial, options.output);
    if (problem)
        QFile::remove(partial);
    return problem;
}

} // namespace cardreel
