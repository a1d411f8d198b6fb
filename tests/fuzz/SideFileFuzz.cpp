// Parses any bytes as a side file, twice, in pieces of different sizes: besides not crashing, both must find the same.

#include "telemetry/SideFileParser.h"
#include "telemetry/Telemetry.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

using namespace cardreel;

namespace {

/// Nothing when the parser refuses the bytes.
std::unique_ptr<Telemetry> parsed(std::string_view bytes, std::size_t chunkBytes)
{
    SideFileLimits limits;
    limits.chunkBytes = chunkBytes;
    limits.sentenceBytes = 512; // within the reach of short inputs
    auto telemetry = std::make_unique<Telemetry>();
    SideFileParser parser(*telemetry, limits);
    while (!bytes.empty()) {
        const std::size_t size = std::min(bytes.size(), parser.spaceBytes());
        std::memcpy(parser.space(), bytes.data(), size);
        if (!parser.take(size))
            return nullptr;
        bytes.remove_prefix(size);
    }
    return parser.finish() ? std::move(telemetry) : nullptr;
}

template<typename List>
bool areEqual(const List& a, const List& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

bool areEqual(const Telemetry& a, const Telemetry& b)
{
    if (a.tripID() != b.tripID() || a.version() != b.version() || a.maxSpeed() != b.maxSpeed() ||
        a.maxMotionABS() != b.maxMotionABS() || a.lastValidSpeedLocation() != b.lastValidSpeedLocation() ||
        a.lastValidHeadingLocation() != b.lastValidHeadingLocation() ||
        !areEqual(a.totalLocations(), b.totalLocations()) || !areEqual(a.varidLocations(), b.varidLocations()) ||
        !areEqual(a.motions(), b.motions()) || !areEqual(a.driveSupports(), b.driveSupports()) ||
        a.GOPs().size() != b.GOPs().size())
        return false;
    for (std::size_t i = 0; i < a.GOPs().size(); ++i) {
        const GOPData groupA = a.GOPs()[i];
        const GOPData groupB = b.GOPs()[i];
        if (groupA.location() != groupB.location() || !areEqual(groupA.motions(), groupB.motions()) ||
            !areEqual(groupA.driveSupportInfos(), groupB.driveSupportInfos()))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // The second size comes from the input, so that a chunk can end anywhere.
    const std::unique_ptr<Telemetry> whole = parsed(bytes, 1 << 16);
    const std::unique_ptr<Telemetry> pieces = parsed(bytes, size == 0 ? 1 : 1 + data[size - 1] % 37);
    if ((whole == nullptr) != (pieces == nullptr) || (whole && !areEqual(*whole, *pieces)))
        std::abort();
    if (whole) {
        for (const DriveSupportData& support : whole->driveSupports())
            support.appearanceLineInfos();
    }
    return 0;
}
