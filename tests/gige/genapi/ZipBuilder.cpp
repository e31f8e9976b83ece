#include "ZipBuilder.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace gige::genapi
{

struct ZipBuilder::Entry {
    std::string name;
    std::uint16_t method; // 0 stored, 8 deflated
    std::uint32_t crc;
    std::size_t size;
    Bytes packed;
};

namespace
{

using Bytes = ZipBuilder::Bytes;

void putU16(Bytes& bytes, std::size_t value)
{
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8U));
}

void putU32(Bytes& bytes, std::size_t value)
{
    putU16(bytes, value);
    putU16(bytes, value >> 16U);
}

void putText(Bytes& bytes, const std::string& text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

std::uint32_t checksum(std::uint32_t before, const std::string& text)
{
    return static_cast<std::uint32_t>(
        crc32(before, reinterpret_cast<const Bytef*>(text.data()), static_cast<uInt>(text.size())));
}

/// A raw deflate stream that is fed piece by piece.
class Deflater
{
  public:
    Deflater()
    {
        constexpr int kRawWindow = -15;
        constexpr int kMemory = 8;
        if (deflateInit2(&mStream, Z_BEST_COMPRESSION, Z_DEFLATED, kRawWindow, kMemory,
                         Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::runtime_error("deflateInit2");
        }
    }
    ~Deflater() { deflateEnd(&mStream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// @param flush  Z_FULL_FLUSH: what was fed so far makes whole bytes that stand for themselves
    void feed(std::string text, int flush)
    {
        mStream.next_in = reinterpret_cast<Bytef*>(text.data());
        mStream.avail_in = static_cast<uInt>(text.size());
        Bytes chunk(std::size_t{64} << 10);
        do {
            mStream.next_out = chunk.data();
            mStream.avail_out = static_cast<uInt>(chunk.size());
            ::deflate(&mStream, flush);
            mPacked.insert(mPacked.end(), chunk.begin(),
                           chunk.end() - static_cast<std::ptrdiff_t>(mStream.avail_out));
        } while (mStream.avail_out == 0);
    }

    Bytes& packed() { return mPacked; }

  private:
    z_stream mStream{};
    Bytes mPacked;
};

} // namespace

ZipBuilder& ZipBuilder::store(const std::string& name, const std::string& content)
{
    return add({name, 0, checksum(0, content), content.size(), {content.begin(), content.end()}});
}

ZipBuilder& ZipBuilder::deflate(const std::string& name, const std::string& content)
{
    Deflater deflater;
    deflater.feed(content, Z_FINISH);
    return add({name, 8, checksum(0, content), content.size(), std::move(deflater.packed())});
}

ZipBuilder& ZipBuilder::deflateBlanks(const std::string& name, std::size_t size)
{
    const std::string piece(std::size_t{1} << 20, ' ');
    Deflater deflater;
    deflater.feed(piece, Z_FULL_FLUSH);
    const Bytes packedPiece = std::exchange(deflater.packed(), {});
    deflater.feed("", Z_FINISH);
    const Bytes& end = deflater.packed();

    Bytes packed;
    std::uint32_t crc = 0;
    const std::uint32_t pieceCrc = checksum(0, piece);
    for (std::size_t done = 0; done < size; done += piece.size()) {
        packed.insert(packed.end(), packedPiece.begin(), packedPiece.end());
        crc = static_cast<std::uint32_t>(
            crc32_combine(crc, pieceCrc, static_cast<z_off_t>(piece.size())));
    }
    packed.insert(packed.end(), end.begin(), end.end());
    return add({name, 8, crc, size, std::move(packed)});
}

ZipBuilder& ZipBuilder::withoutLocalSizes()
{
    mHasLocalSizes = false;
    return *this;
}

ZipBuilder& ZipBuilder::add(const Entry& entry)
{
    const std::size_t localHeader = mFiles.size();
    const auto putCommon = [&](Bytes& out, bool hasSizes) {
        putU16(out, 20);                       // version needed
        putU16(out, mHasLocalSizes ? 0 : 0x8); // flags
        putU16(out, entry.method);
        putU32(out, 0); // time and date
        putU32(out, hasSizes ? entry.crc : 0);
        putU32(out, hasSizes ? entry.packed.size() : 0);
        putU32(out, hasSizes ? entry.size : 0);
        putU16(out, entry.name.size());
        putU16(out, 0); // extra field
    };
    putText(mFiles, "PK\x03\x04");
    putCommon(mFiles, mHasLocalSizes);
    putText(mFiles, entry.name);
    mFiles.insert(mFiles.end(), entry.packed.begin(), entry.packed.end());

    putText(mDirectory, "PK\x01\x02");
    putU16(mDirectory, 20); // version made by
    putCommon(mDirectory, true);
    putU16(mDirectory, 0); // comment
    putU16(mDirectory, 0); // disk
    putU16(mDirectory, 0); // internal attributes
    putU32(mDirectory, 0); // external attributes
    putU32(mDirectory, localHeader);
    putText(mDirectory, entry.name);
    ++mCount;
    mHasLocalSizes = true;
    return *this;
}

Bytes ZipBuilder::finish()
{
    Bytes archive = mFiles;
    archive.insert(archive.end(), mDirectory.begin(), mDirectory.end());
    putText(archive, "PK\x05\x06");
    putU32(archive, 0); // disks
    putU16(archive, mCount);
    putU16(archive, mCount);
    putU32(archive, mDirectory.size());
    putU32(archive, mFiles.size());
    putU16(archive, 0); // comment
    return archive;
}

} // namespace gige::genapi
