#include "platform/volumes/MountedVolumes.h"

#include "platform/BackgroundThread.h"
#include "platform/files/Files.h"
#include "support/Waiting.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/sysmacros.h>

#include <semaphore>

using namespace Qt::StringLiterals;

namespace cardreel {

namespace {

const QByteArray card = "40 27 8:17 / /media/u/CARD rw,nosuid shared:9 - vfat /dev/sdb1 rw,utf8";
const QByteArray secondCard = "41 27 179:1 / /media/u/TWO rw - exfat /dev/mmcblk0p1 rw";

/// The kernel's folders and table of mounts, written by the test.
class System
{
public:
    System()
    {
        device(u"8:17"_s, u"pci/usb1/host2/block/sdb/sdb1"_s);
        device(u"8:33"_s, u"pci/ata1/block/sdc/sdc1"_s);
        write(u"pci/ata1/block/sdc/removable"_s, "1\n");
        device(u"8:1"_s, u"pci/ata0/block/sda/sda1"_s);
        write(u"pci/ata0/block/sda/removable"_s, "0\n");
        device(u"179:1"_s, u"soc/mmc_host/mmc0/mmc0:1/block/mmcblk0/mmcblk0p1"_s);
        write(u"soc/mmc_host/mmc0/mmc0:1/block/mmcblk0/device/type"_s, "SD\n");
        device(u"179:9"_s, u"soc/mmc_host/mmc1/mmc1:1/block/mmcblk1/mmcblk1p1"_s);
        write(u"soc/mmc_host/mmc1/mmc1:1/block/mmcblk1/device/type"_s, "MMC\n");
        setTable({});
    }

    void setTable(const QByteArrayList& lines) { write(u"mountinfo"_s, lines.join('\n') + '\n'); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    MountedVolumes::Surroundings surroundings() const
    {
        return {.mountTable = path(u"mountinfo"_s),
                .devices = DeviceTree(m_folder.path(), path(u"uuids"_s)),
                .bus = QDBusConnection(u"there is none"_s),
                .space = [](const QString&) {
                    return MountedVolumes::Space{1000, 10};
                }};
    }

private:
    void write(const QString& name, const QByteArray& bytes)
    {
        QDir().mkpath(files::folderOf(path(name)));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    void device(const QString& number, const QString& folder)
    {
        write(folder + u"/partition"_s, "1\n");
        QDir().mkpath(path(u"dev/block"_s));
        QVERIFY(QFile::link(path(folder), path(u"dev/block/"_s + number)));
    }

    QTemporaryDir m_folder;
};

QStringList rootPaths(const std::vector<MountedVolume>& volumes)
{
    QStringList paths;
    for (const MountedVolume& volume : volumes)
        paths += volume.rootPath;
    return paths;
}

/// Answers as the service of disks does, on a bus of the test's own.
class FakeDisks : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.DBus.ObjectManager")

public:
    UDisks::Objects objects;

public Q_SLOTS:
    cardreel::UDisks::Objects GetManagedObjects() const { return objects; } // NOLINT: the protocol's own name

Q_SIGNALS:
    void InterfacesAdded(const QDBusObjectPath& object); // NOLINT: likewise
};

UDisks::Objects diskObjects(const QVariantMap& block, const QVariantMap& drive)
{
    QVariantMap whole = block;
    whole.insert(u"DeviceNumber"_s, quint64{makedev(8, 17)});
    whole.insert(u"Drive"_s, QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/UDisks2/drives/d"_s)));
    return {{QDBusObjectPath(u"/org/freedesktop/UDisks2/drives/d"_s), {{u"org.freedesktop.UDisks2.Drive"_s, drive}}},
            {QDBusObjectPath(u"/org/freedesktop/UDisks2/block_devices/sdb1"_s),
             {{u"org.freedesktop.UDisks2.Block"_s, whole}}}};
}

} // namespace

class MountedVolumesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { BackgroundThread::wait(); }

    void readsTheTable_data()
    {
        QTest::addColumn<QByteArrayList>("lines");
        QTest::addColumn<QStringList>("paths");
        const auto row = [](const char* what, const QByteArrayList& lines, const QStringList& paths) {
            QTest::newRow(what) << lines << paths;
        };
        row("nothing", {""}, {});
        row("cut short", {card.first(card.indexOf(" /dev"))}, {});
        row("without separator", {QByteArray(card).replace(" - ", " ")}, {});
        row("no device number", {QByteArray(card).replace("8:17", "8")}, {});
        row("loop", {"40 27 7:1 / /media/u/IMAGE ro - iso9660 /dev/loop1 ro"}, {});
        row("snap", {"40 27 8:17 / /snap/core/1 ro - squashfs /dev/sdb1 ro"}, {});
        row("no device behind it", {"40 27 0:5 / /media/u/x rw - tmpfs tmpfs rw"}, {});
        row("program-made", {"40 27 0:6 / /media/u/x rw - fuse.sshfs /dev/x rw"}, {});
        row("live system", {"40 27 8:17 / / rw - ext4 /dev/sdb1 rw", "41 40 8:18 / /boot/efi rw - vfat /dev/sdb2 rw"},
            {});
        row("folder mounted elsewhere", {QByteArray(card).replace(" / ", " /NORMAL ")}, {});
        row("card, mounted elsewhere too", {card, QByteArray(card).replace("CARD", "OTHER").replace("40", "44")},
            {u"/media/u/CARD"_s});
        row("hidden by another", {card, "41 40 179:1 / /media/u/CARD rw - exfat /dev/mmcblk0p1 rw"},
            {u"/media/u/CARD"_s});
        row("several tags", {QByteArray(card).replace("shared:9", "shared:9 master:1 unbindable")},
            {u"/media/u/CARD"_s});
        row("file system in a program", {"40 27 8:17 / /media/u/C rw - fuseblk /dev/sdb1 rw"}, {u"/media/u/C"_s});
        row("only the mount may be read", {QByteArray(card).replace("rw,n", "ro,n")}, {u"/media/u/CARD ro"_s});
        row("only read", {QByteArray(card).replace("rw,utf8", "ro,utf8")}, {u"/media/u/CARD ro"_s});
        row("read after errors", {card + ",errors=remount-ro"}, {u"/media/u/CARD"_s});
        row("escapes", {QByteArray(card).replace("CARD", R"(A\040B\011\134\012\1)")}, {u"/media/u/A B\t\\\n\\1"_s});
        row("not UTF-8", {QByteArray(card).replace("CARD", "caf\xE9")}, {files::fromNativePath("/media/u/caf\xE9")});
    }
    void readsTheTable()
    {
        QFETCH(QByteArrayList, lines);
        QStringList paths;
        for (const Mount& mount : mountsOfDevices(mountsFromTable(lines.join('\n'))))
            paths += mount.path + (mount.isReadOnly ? u" ro"_s : QString());
        QTEST(paths, "paths");
    }

    void tellsWhatIsRemovable_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<bool>("isRemovable");
        QTest::newRow("unknown device") << QByteArray("9:9") << false;
        QTest::newRow("built in") << QByteArray("8:1") << false;
        QTest::newRow("soldered in") << QByteArray("179:9") << false;
        QTest::newRow("reader") << QByteArray("8:33") << true;
        QTest::newRow("disk on a USB port") << QByteArray("8:17") << true;
        QTest::newRow("card") << QByteArray("179:1") << true;
    }
    void tellsWhatIsRemovable()
    {
        QFETCH(QByteArray, number);
        System system;
        system.setTable({QByteArray(card).replace("8:17", number)});
        QTEST(!MountedVolumes(system.surroundings()).volumes().empty(), "isRemovable");
    }

    void oneThatHangsHoldsNobody()
    {
        std::binary_semaphore mayEnd(0);
        System system;
        system.setTable({card, secondCard});
        auto surroundings = system.surroundings();
        surroundings.space = [&mayEnd](const QString& path) -> std::optional<MountedVolumes::Space> {
            if (path == u"/media/u/TWO")
                return MountedVolumes::Space{1000, 10};
            mayEnd.acquire();
            return std::nullopt;
        };
        MountedVolumes volumes(surroundings);
        QCOMPARE(rootPaths(volumes.volumes()), (QStringList{u"/media/u/CARD"_s, u"/media/u/TWO"_s}));
        WAIT_FOR(volumes.volumes()[1].bytesFree == 10);
        QCOMPARE(volumes.volumes()[0].bytesTotal, -1);
        mayEnd.release();
    }

    void comesAndGoes()
    {
        System system;
        MountedVolumes volumes(system.surroundings());
        QSignalSpy changes(&volumes, &MountedVolumes::didChange);
        QSignalSpy moves(&volumes, &MountedVolumes::didMove);
        const auto mount = [&](const QByteArrayList& lines) {
            system.setTable(lines);
            volumes.refresh();
        };
        mount({card});
        QCOMPARE(changes.size(), 1);
        QCOMPARE(volumes.volumes().front().name, u"CARD"_s);
        WAIT_FOR(volumes.volumes().front().bytesTotal > 0);
        QCOMPARE(changes.size(), 2);
        mount({card});
        QCOMPARE(changes.size(), 2);
        mount({QByteArray(card).replace("CARD", "NEW")});
        QCOMPARE(changes.size(), 3);
        QCOMPARE(moves.takeFirst(), (QVariantList{u"/media/u/CARD"_s, u"/media/u/NEW"_s}));
        mount({});
        QCOMPARE(changes.size(), 4);
        QVERIFY(volumes.volumes().empty());
    }

    void tellsMoves_data()
    {
        // Lists of volumes, one after the other: each as UUID or device, "@" and path.
        QTest::addColumn<QList<QStringList>>("lists");
        QTest::addColumn<QStringList>("moves");
        const auto row = [](const char* what, const QList<QStringList>& lists, const QStringList& moves) {
            QTest::newRow(what) << lists << moves;
        };
        row("comes", {{}, {u"A@/a"_s}}, {});
        row("another in its place", {{u"A@/a"_s}, {u"B@/b"_s}}, {});
        row("another under the same device", {{u"/dev/sdb1@/a"_s}, {}, {u"/dev/sdb1@/b"_s}}, {});
        row("mounted elsewhere too", {{u"A@/a"_s}, {u"A@/a"_s, u"A@/b"_s}}, {});
        row("a copy goes", {{u"A@/a"_s, u"A@/b"_s}, {u"A@/a"_s}}, {});
        row("a path that another took", {{u"A@/a"_s}, {}, {u"B@/a"_s}, {}, {u"A@/b"_s}}, {});
        row("device moves", {{u"/dev/sdb1@/a"_s}, {u"/dev/sdb1@/b"_s}}, {u"/a>/b"_s});
        row("comes back elsewhere", {{u"A@/a"_s, u"B@/c"_s}, {u"B@/c"_s}, {u"A@/b"_s, u"B@/c"_s}}, {u"/a>/b"_s});
        row("there and back", {{u"A@/a"_s}, {u"A@/b"_s}, {u"A@/a"_s}}, {u"/a>/b"_s, u"/b>/a"_s});
    }
    void tellsMoves()
    {
        QFETCH(QList<QStringList>, lists);
        VolumeMoves moves;
        QStringList told;
        for (const QStringList& list : lists) {
            std::vector<MountedVolume> volumes;
            for (const QString& text : list) {
                MountedVolume volume;
                const QString identity = text.section(u'@', 0, 0);
                (identity.startsWith(u'/') ? volume.device : volume.uuid) = identity;
                volume.rootPath = text.section(u'@', 1);
                volumes.push_back(volume);
            }
            for (const VolumeMoves::Move& move : moves.update(volumes))
                told += move.from + u'>' + move.to;
        }
        QTEST(told, "moves");
    }

    void uuidIsTheDevices()
    {
        QTemporaryDir folder;
        QVERIFY(QFile::link(u"/dev/null"_s, folder.filePath(u"5A1B-22C3"_s)));
        const DeviceTree tree(folder.path(), folder.path());
        QCOMPARE(tree.uuid(u"/dev/null"_s), u"5A1B-22C3"_s);
        QCOMPARE(tree.uuid(u"/dev/zero"_s), QString());
    }

    void theServiceOfDisksKnowsBlocks_data()
    {
        QTest::addColumn<QVariantMap>("block");
        QTest::addColumn<QVariantMap>("drive");
        QTest::addColumn<QString>("label"); // of a removable one
        const auto row = [](const char* what, const QVariantMap& block, const QVariantMap& drive,
                            const QString& label) { QTest::newRow(what) << block << drive << label; };
        const QVariantMap removable = {{u"Removable"_s, true}};
        row("fixed", {}, {}, {});
        row("fixed on another bus", {}, {{u"ConnectionBus"_s, u"ieee1394"_s}}, {});
        row("the system's", {{u"HintSystem"_s, true}}, removable, {});
        row("ignored", {{u"HintIgnore"_s, true}}, removable, {});
        row("removable", {{u"IdLabel"_s, u"A"_s}}, removable, u"A"_s);
        row("medium", {{u"IdLabel"_s, u"A"_s}, {u"HintName"_s, u"B"_s}}, {{u"MediaRemovable"_s, true}}, u"B"_s);
        row("reader that is built in", {{u"IdLabel"_s, u"A"_s}}, {{u"ConnectionBus"_s, u"sdio"_s}}, u"A"_s);
    }
    void theServiceOfDisksKnowsBlocks()
    {
        QFETCH(QVariantMap, block);
        QFETCH(QVariantMap, drive);
        const UDisks::Blocks blocks = UDisks::blocksOf(diskObjects(block, drive));
        QCOMPARE(blocks.keys(), QList<quint64>{makedev(8, 17)});
        QTEST(blocks.begin()->isRemovable ? blocks.begin()->label : QString(), "label");
    }

    void theServiceOfDisksComesAndGoes()
    {
        const QString daemon = QStandardPaths::findExecutable(u"dbus-daemon"_s);
        if (daemon.isEmpty())
            QSKIP("there is no dbus-daemon");
        QProcess bus;
        bus.start(daemon, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        QVERIFY(bus.waitForReadyRead());
        const QString address = QString::fromLatin1(bus.readLine().trimmed());
        auto server = QDBusConnection::connectToBus(address, u"server"_s);
        System system;
        system.setTable({card});
        auto surroundings = system.surroundings();
        surroundings.bus = QDBusConnection::connectToBus(address, u"client"_s);
        MountedVolumes volumes(surroundings);
        const auto name = [&] { return volumes.volumes().empty() ? QString() : volumes.volumes().front().name; };
        QCOMPARE(name(), u"CARD"_s); // the kernel's word until the service comes

        FakeDisks disks;
        const QVariantMap removable = {{u"Removable"_s, true}};
        disks.objects = diskObjects({{u"IdLabel"_s, u"Dashcam 1"_s}, {u"IdUUID"_s, u"5A1B-22C3"_s}}, removable);
        QVERIFY(server.registerObject(u"/org/freedesktop/UDisks2"_s, &disks, QDBusConnection::ExportAllContents));
        QVERIFY(server.registerService(u"org.freedesktop.UDisks2"_s));
        WAIT_FOR(name() == u"Dashcam 1"_s);
        QCOMPARE(volumes.volumes().front().uuid, u"5A1B-22C3"_s);
        disks.objects = diskObjects({}, {});
        Q_EMIT disks.InterfacesAdded(QDBusObjectPath(u"/org/freedesktop/UDisks2/block_devices/sdb1"_s));
        WAIT_FOR(volumes.volumes().empty());
        QVERIFY(server.unregisterService(u"org.freedesktop.UDisks2"_s));
        WAIT_FOR(name() == u"CARD"_s);
        bus.terminate();
        QVERIFY(bus.waitForFinished());
    }
};

} // namespace cardreel

QTEST_GUILESS_MAIN(cardreel::MountedVolumesTest)
#include "MountedVolumesTest.moc"
