// Reads any bytes as a settings file, writes what was read and reads that again: besides not crashing, the record must
// come back wherever the format has it come back.

#include "platform/files/Files.h"
#include "settings/SettingFileBuilder.h"
#include "settings/SettingFileParser.h"

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

/// Figures up to 9, so that the date comes back, too.
ClockReading stillClock()
{
    return {2009, 8, 7, 6, 5, 4};
}

/// What reading the file that is written of it gives, its checksum and date aside.
SettingFileInfo expectedBack(SettingFileInfo info)
{
    if (info.headerID == 0)
        info.headerID = 0x53455444;
    if (info.dataEndAddress == 0)
        info.dataEndAddress = 43;
    if (info.passwordReset != 0)
        info.passwordReset = 0xFF;
    if (info.modelID != SettingModel::model0D00)
        info.playbackVolume = 0;
    info.timeZone = 0;
    return info;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    SettingFileParser first(bytes);
    const bool isRead = first.parse();
    const SettingFileInfo& info = first.info();
    SettingFileBuilder builder(info, stillClock);
    const QByteArray written = builder.build();
    require(builder.build() == written);
    require(written.size() >= 27 && (SettingModel::isKnown(info.modelID) || written.size() == 27));
    if (!isRead || info.modelID == SettingModel::model1000)
        return 0; // that model is written otherwise than it is read

    const qsizetype versionSize = info.version ? files::nativePath(*info.version).size() : 0;
    SettingFileParser second(written);
    const bool isReadAgain = second.parse();
    if (versionSize != 0 && versionSize != 4)
        return 0; // shifts everything behind it
    require(isReadAgain);
    SettingFileInfo expected = expectedBack(info);
    expected.checksum = static_cast<quint8>(written.at(15));
    expected.creationDate = second.info().creationDate;
    require(second.info() == expected);
    require(expected.creationDate == SettingFileParser(QByteArray::fromHex("090807060504")).getDateValue());
    return 0;
}
