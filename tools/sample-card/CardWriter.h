// Makes the card: drives the planned recordings, writes their side files, pictures and settings, and has the videos
// encoded on a few threads. One object a run, on the main thread.
#pragma once

#include "sample-card/CardPlan.h"
#include "sample-card/FileOutput.h"
#include "sample-card/Options.h"
#include "sample-card/SceneBackdrop.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace cardreel {

// Called from the main thread while work goes on: how many of how many things of a kind are done.
using ProgressReport = std::function<void(const QString& what, std::size_t done, std::size_t all)>;

class CardWriter
{
public:
    CardWriter(Options options, ProgressReport progress);

    // Makes the card under a name of its own and gives it the wanted one when it is complete. After a failure nothing
    // of it stays behind.
    Problem write();

private:
    struct VideoJob
    {
        std::size_t recording;
        CameraSide side;
        QString path;
    };

    Problem prepareFolder();
    Problem writeCard();
    Problem makeFolders();
    Problem writeDrive();
    Problem writePictures(std::size_t recording, const DriveLog& log, std::size_t& nextPicture);
    Problem writeVideos();
    Problem encodeAll(const std::vector<VideoJob>& jobs);
    Problem encode(const VideoJob& job) const;
    Problem copyVideos(const std::vector<VideoJob>& copies);
    Problem writePlaceholders(const std::vector<VideoJob>& jobs);
    Problem stampVideos();

    void prepareBackdrops();
    const SceneBackdrop& backdrop(CameraSide side, int trip) const;
    QString inCard(const QString& relative) const;
    QString videoPath(std::size_t recording, CameraSide side) const;
    int videoSeconds(CameraSide side) const;
    bool isEncoded(std::size_t recording) const;

    Options options;
    ProgressReport progress;
    CardPlan plan;
    QString folder; // the card while it grows
    QString ffmpeg;
    std::map<std::size_t, DriveLog> logs; // of the recordings whose videos are encoded
    std::map<std::pair<CameraSide, int>, std::unique_ptr<SceneBackdrop>> backdrops;
};

// Writes one side file with the options' numbers of fixes and samples.
Problem writeSideFile(const Options& options);

} // namespace cardreel
