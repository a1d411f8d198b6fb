#pragma once

#include <QByteArray>
#include <QTemporaryDir>

namespace cardreel::test {

/// A user's home of the test's own, so that tests running side by side share no caches and no settings. Made before
/// anything asks where those are.
class TestHome
{
public:
    TestHome()
    {
        qputenv("XDG_CACHE_HOME", m_folder.filePath(QStringLiteral("cache")).toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_folder.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_folder.filePath(QStringLiteral("data")).toLocal8Bit());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace cardreel::test
