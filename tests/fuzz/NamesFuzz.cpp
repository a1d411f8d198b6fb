// Feeds arbitrary bytes as a file's path through everything that reads meaning into names.

#include "media/CardLayout.h"
#include "names/ConstClass.h"
#include "platform/files/Files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace cardreel;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

bool isAsciiDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString path = files::fromNativePath(bytes);
    require(files::nativePath(path) == bytes);
    require(files::displayPath(path).size() == path.size());

    const QString name = files::nameOf(path);
    require(files::folderOf(path).size() + name.size() + (path.contains(u'/') ? 1 : 0) == path.size());
    require(name.startsWith(files::stemOf(path)));

    const std::optional<Instant> date = recorderDate(path);
    require(!recordingDateText(path).isEmpty());
    (void)CardLayout::dateFromJSTFileNameString(path);
    (void)eventNameOfFolder(name);
    if (CardLayout::fullMatchResultWithTarget(name, ConstClass::REG_LM90_FILE_VIDEO)) {
        // The pattern also takes other scripts' digits, and 31 days in every month.
        require(name.size() == 16);
        const int day = QStringView(name).sliced(4, 2).toInt();
        require(date.has_value() || !isAsciiDigits(QStringView(name).first(12)) || day > 28);
    }
    if (const std::optional<qint64> number = decimalInteger(name))
        require(name.size() <= 20 || name.contains(u"00"));
    return 0;
}
