#include "BlockPackets.h"

#include "GvspLeader.h"
#include "PacketArithmetic.h"

#include <algorithm>

namespace camera
{

using namespace gige::wire;

namespace
{

ImageLeader leaderOf(const StreamOrder& order)
{
    return {.timestamp = order.timestamp,
            .image = {.pixelFormat = order.pixelFormat,
                      .width = order.view.width,
                      .height = order.view.height,
                      .offsetX = order.view.offsetX,
                      .offsetY = order.view.offsetY}};
}

void append(std::vector<std::uint8_t>& bytes, std::span<const std::uint8_t> more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace

void BlockPackets::make(const StreamOrder& order, std::span<const std::uint8_t> data)
{
    mExtendedIds = order.channel.extendedIds;
    const std::size_t packetBytes = dataBytesPerPacket(order.channel.packetSize, mExtendedIds);
    const std::uint64_t dataPackets = dataPacketCount(data.size(), packetBytes);
    mHeaders.clear();
    mHeaderEnds.clear();
    addHeader(order, GvspFormat::Leader);
    append(mHeaders, encode(leaderOf(order)));
    mHeaderEnds.back() = mHeaders.size();
    for (std::uint64_t i = 0; i < dataPackets; ++i) {
        addHeader(order, GvspFormat::Payload);
    }
    addHeader(order, GvspFormat::Trailer);
    append(mHeaders, encode(ImageTrailer{.height = order.view.height}));
    mHeaderEnds.back() = mHeaders.size();

    mPackets.clear();
    std::size_t start = 0;
    for (const std::size_t end : mHeaderEnds) {
        mPackets.push_back({.header = std::span(mHeaders).subspan(start, end - start)});
        start = end;
    }
    for (std::size_t i = 0; i < dataPackets; ++i) {
        const std::size_t at = i * packetBytes;
        mPackets[i + 1].payload = data.subspan(at, std::min(packetBytes, data.size() - at));
    }
}

void BlockPackets::addHeader(const StreamOrder& order, GvspFormat format)
{
    const GvspHeader header{.blockId = order.blockId,
                            .format = format,
                            .extendedIds = mExtendedIds,
                            .packetId = static_cast<std::uint32_t>(mHeaderEnds.size())};
    const std::size_t at = mHeaders.size();
    mHeaders.resize(at + header.size());
    encode(header, std::span(mHeaders).subspan(at));
    mHeaderEnds.push_back(mHeaders.size());
}

void BlockPackets::markResent(std::uint32_t packetId)
{
    const std::size_t at = packetId == 0 ? 0 : mHeaderEnds[packetId - 1];
    if (mExtendedIds) {
        putU16(&mHeaders[at + 2], kGvspResent);
    } else {
        putU16(&mHeaders[at], static_cast<std::uint16_t>(GvcpStatus::PacketResend));
    }
}

} // namespace camera
