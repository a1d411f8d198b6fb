#include "platform/map/TileLoader.h"

#include "platform/BackgroundThread.h"
#include "platform/map/HttpTileSource.h"
#include "platform/map/TileServer.h"
#include "platform/map/TileThread.h"
#include "support/CardBuilder.h"
#include "support/Waiting.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <future>

namespace cardreel {

using namespace Qt::StringLiterals;
using test::TileServer;
using Manner = TileServer::Manner;

class TileLoaderTest : public QObject
{
    Q_OBJECT

    /// Once a thing failed it isn't tried again in a test's life, or at once.
    static constexpr TileRetryTimes m_never{.firstMs = 3'600'000, .longestMs = 3'600'000, .longestPauseMs = 3'600'000};
    static constexpr TileRetryTimes m_atOnce{.firstMs = 1, .longestMs = 1, .longestPauseMs = 1};

    std::optional<QTemporaryDir> m_folder;
    std::unique_ptr<TileServer> m_server;

    struct Map
    {
        TileLoader loader;
        QList<TileKey> loaded;
        QList<TileKey> missing;

        Map(const TileSettings& settings, const TileRetryTimes& times)
            : loader(settings, nullptr, times)
        {
            QObject::connect(&loader, &TileLoader::tileDidLoad, &loader,
                             [this](const TileKey& key) { loaded.append(key); });
            QObject::connect(&loader, &TileLoader::tileIsMissing, &loader,
                             [this](const TileKey& key) { missing.append(key); });
        }
        bool isUnreachable() const { return loader.state() == TileLoader::State::Unreachable; }
    };

    std::unique_ptr<Map> map(const TileRetryTimes& times = m_never, const QString& location = {})
    {
        TileSettings settings;
        settings.location = location.isEmpty() ? m_server->url() : location;
        settings.cacheFolder = m_folder->filePath(u"cache"_s);
        return std::make_unique<Map>(settings, times);
    }

    /// The same thread answers for a folder, so by then it has heard of what was wished before.
    void waitUntilWishesAreHeard()
    {
        const auto other = map(m_never, m_folder->path());
        other->loader.setWanted({key(0)});
        WAIT_FOR(other->missing.size() == 1);
    }

    /// Without handling this thread's events meanwhile.
    static void letTheThreadWork()
    {
        for (int turns = 0; turns < 20; ++turns) {
            const auto turn = std::make_shared<std::promise<void>>();
            TileThread::shared()->post([turn] { turn->set_value(); });
            turn->get_future().wait();
        }
    }

    static TileKey key(int x) { return {9, x, 0}; }
    static QByteArray path(int x) { return "/9/" + QByteArray::number(x) + "/0.png"; }

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        m_server = std::make_unique<TileServer>();
    }
    void cleanup() { BackgroundThread::wait(); }

    void bringsTheMostUrgentFirst()
    {
        test::CardBuilder files;
        for (const int x : {1, 2, 3})
            files.file(u"9/%1/0.png"_s.arg(x), test::tilePng());
        const auto map = this->map(m_never, files.root());
        map->loader.setWanted({key(3), key(1), key(4), {10, 0, 0}, {9, 512, 0}, key(2)});
        WAIT_FOR(map->loaded.size() == 3 && map->missing.size() == 3);
        QCOMPARE(map->loaded, (QList{key(3), key(1), key(2)}));
        QCOMPARE(map->missing, (QList{key(4), {10, 0, 0}, {9, 512, 0}}));
        QCOMPARE(map->loader.maxZoom(), 9);
    }

    void whatIsOnItsWayIsNotBroughtTwice()
    {
        const auto map = this->map(m_never, m_folder->path());
        QVERIFY(QDir(m_folder->path()).mkpath(u"9/1"_s));
        QVERIFY(QImage(1, 1, QImage::Format_RGB32).save(m_folder->filePath(u"9/1/0.png"_s)));
        for (int i = 0; i < 5; ++i) {
            map->loader.setWanted({key(1)});
            letTheThreadWork();
        }
        QCoreApplication::processEvents();
        QCOMPARE(map->loaded, QList{key(1)});
    }

    void asksOnlyForWhatIsMissing()
    {
        m_server->answer = [](const TileServer::Request& request) {
            return request.path == path(2) ? TileServer::Reply{404, {}}
                                           : TileServer::Reply{200, test::tilePng(), "Cache-Control: max-age=99\r\n"};
        };
        auto map = this->map();
        map->loader.setWanted({key(1), key(2)});
        WAIT_FOR(map->loaded.size() == 1 && map->missing.size() == 1);
        // Thrown away and wanted again; then in another window.
        map->loader.setWanted({key(1), key(2)});
        WAIT_FOR(map->loaded.size() == 2 && map->missing.size() == 2);
        map = this->map();
        map->loader.setWanted({key(1)});
        WAIT_FOR(map->loaded.size() == 1);
        QCOMPARE(m_server->requests.size(), size_t(2));
    }

    void dropsWhatIsNotWantedAnyMore()
    {
        m_server->answer = [](const auto&) { return TileServer::Reply{.manner = Manner::Held}; };
        const auto map = this->map();
        map->loader.setWanted({key(1), key(2), key(3)});
        WAIT_FOR(m_server->held() == 2);
        map->loader.setWanted({key(2), key(4)});
        WAIT_FOR(m_server->dropped == 1 && m_server->held() == 2);
        m_server->release();
        WAIT_FOR(map->loaded.size() == 2);
        QCOMPARE(QSet<TileKey>(map->loaded.begin(), map->loaded.end()), (QSet{key(2), key(4)}));
        QCOMPARE(m_server->requests.size(), size_t(3));
    }

    void mapsTogetherAskForTwoAtATime()
    {
        m_server->answer = [](const auto&) { return TileServer::Reply{.manner = Manner::Held}; };
        const auto one = map();
        auto other = map();
        const auto third = map();
        one->loader.setWanted({key(1), key(2)});
        WAIT_FOR(m_server->held() == 2);
        other->loader.setWanted({key(3), key(4)});
        third->loader.setWanted({key(5), key(6)});
        other.reset(); // what waits for its turn is forgotten
        waitUntilWishesAreHeard();
        QCOMPARE(m_server->held(), size_t(2));
        m_server->release();
        WAIT_FOR(one->loaded.size() == 2 && third->loaded.size() == 2);
        QCOMPARE(m_server->mostHeld, size_t(2));
        QCOMPARE(m_server->requests.size(), size_t(4));
    }

    void survivesBadAnswers_data()
    {
        QTest::addColumn<TileServer::Reply>("reply");
        QTest::newRow("page") << TileServer::Reply{200, "<html>Log in</html>", "Content-Type: text/html\r\n"};
        QTest::newRow("huge picture") << TileServer::Reply{200, test::tilePng(2000)};
        QTest::newRow("circle") << TileServer::Reply{302, {}, "Location: /9/1/0.png\r\n"};
    }
    void survivesBadAnswers()
    {
        QFETCH(TileServer::Reply, reply);
        m_server->answer = [&reply](const auto&) { return reply; };
        const auto map = this->map(m_atOnce);
        QSignalSpy changes(&map->loader, &TileLoader::stateDidChange);
        map->loader.setWanted({key(1), key(2), key(3), key(4)});
        WAIT_FOR(map->isUnreachable());
        QVERIFY(!changes.isEmpty());
        QVERIFY(map->loaded.isEmpty());
        m_server->answer = nullptr;
        WAIT_FOR(map->loaded.size() == 4 && !map->isUnreachable());
        QVERIFY(map->missing.isEmpty());
    }

    void leavesADeadServerAlone()
    {
        m_server->answer = [](const auto&) { return TileServer::Reply{503, {}}; };
        const auto map = this->map();
        std::vector<TileKey> wanted(50);
        std::generate(wanted.begin(), wanted.end(), [x = 0]() mutable { return key(x++); });
        map->loader.setWanted(wanted);
        WAIT_FOR(map->isUnreachable());
        for (int i = 0; i < 20; ++i) {
            std::rotate(wanted.begin(), wanted.begin() + 1, wanted.end());
            map->loader.setWanted(wanted);
        }
        waitUntilWishesAreHeard();
        QVERIFY2(m_server->requests.size() <= 4, qPrintable(QString::number(m_server->requests.size())));
    }

    void oldTilesAreBetterThanNone()
    {
        m_server->answer = [](const auto&) {
            return TileServer::Reply{200, test::tilePng(), "Cache-Control: max-age=0\r\n"};
        };
        const std::vector<TileKey> keys{key(1), key(2), key(3), key(4), key(5), key(6)};
        auto map = this->map();
        map->loader.setWanted(keys);
        WAIT_FOR(map->loaded.size() == 6);
        m_server->goAway();
        map = this->map(m_atOnce);
        map->loader.setWanted(keys);
        WAIT_FOR(map->loaded.size() == 6 && map->isUnreachable());
        map->loaded.clear();
        m_server->comeBack();
        WAIT_FOR(map->loaded.size() == 6 && !map->isUnreachable());
        QCOMPARE(m_server->requests.size(), size_t(12));
    }

    void aSourceMayComeLater()
    {
        test::CardBuilder files;
        files.file(u"9/1/0.png"_s, test::tilePng());
        const auto map = this->map(m_atOnce, files.root() + "-later"_L1);
        map->loader.setWanted({key(1)});
        WAIT_FOR(map->isUnreachable());
        files.mountAgainAs(u"card-later"_s);
        WAIT_FOR(map->loaded.size() == 1 && !map->isUnreachable());
    }

    void endsWhileTheServerIsSilent()
    {
        m_server->answer = [](const auto&) { return TileServer::Reply{.manner = Manner::Held}; };
        for (const size_t begun : {2U, 0U, 1U, 2U, 0U}) {
            auto map = this->map();
            map->loader.setWanted({key(1), key(2)});
            WAIT_FOR(m_server->held() >= begun);
            map.reset();
            BackgroundThread::wait();
            WAIT_FOR(m_server->held() == 0);
        }
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::TileLoaderTest)
#include "TileLoaderTest.moc"
