#include "TiffPages.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>
#include <vector>

namespace telvo
{

namespace
{

// The numbers of a file header, in the writing machine's byte order.
constexpr std::uint16_t kOrder = std::endian::native == std::endian::little ? 0x4949 : 0x4D4D;
constexpr std::uint16_t kClassic = 42;
constexpr std::uint16_t kBig = 43;

/// Sizes in bytes of what a directory is made of.
struct Layout {
    std::uint32_t firstLink; // where the file has it
    std::uint32_t count;     // of entries, in front of them
    std::uint32_t entry;
    std::uint32_t link; // to the next directory, behind the entries; also a value's place
};

constexpr Layout kClassicLayout{.firstLink = 4, .count = 2, .entry = 12, .link = 4};
constexpr Layout kBigLayout{.firstLink = 8, .count = 8, .entry = 20, .link = 8};
constexpr std::uint32_t kTypeOffset = 2;  // in an entry: u16
constexpr std::uint32_t kCountOffset = 4; // in an entry: the number of its values

/// Bytes of a value, by its type's number.
constexpr std::array<std::uint8_t, 19> kTypeSizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4,
                                                  8, 4, 8, 4, 0, 0, 8, 8, 8};
/// No page of ours has more.
constexpr std::uint64_t kMostEntries = 64;

/// A page's end, and where the next one's place stands.
struct Page {
    std::uint64_t end;
    std::uint64_t link;
};

class Pages
{
  public:
    explicit Pages(OutputFile& file) : mFile(file), mSize(file.size()) {}

    std::uint32_t cut(std::uint32_t most);

  private:
    std::uint64_t number(const std::uint8_t* bytes, std::size_t size) const;
    std::vector<std::uint8_t> read(std::uint64_t position, std::uint64_t size);
    std::uint64_t read(const Page& from);
    bool readLayout();
    bool readPage(std::uint64_t position, Page& page);
    std::uint64_t endOf(const std::uint8_t* entry) const;

    OutputFile& mFile;
    std::uint64_t mSize;
    Layout mLayout = kClassicLayout;
};

std::uint64_t Pages::number(const std::uint8_t* bytes, std::size_t size) const
{
    std::uint64_t value = 0;
    auto* const place = reinterpret_cast<std::uint8_t*>(&value);
    std::memcpy(place + (std::endian::native == std::endian::little ? 0 : sizeof value - size),
                bytes, size);
    return value;
}

/// Empty where the file has fewer bytes.
std::vector<std::uint8_t> Pages::read(std::uint64_t position, std::uint64_t size)
{
    if (position > mSize || mSize - position < size) {
        return {};
    }
    std::vector<std::uint8_t> bytes(size);
    mFile.seek(position);
    bytes.resize(mFile.read(bytes));
    return bytes.size() == size ? bytes : std::vector<std::uint8_t>();
}

bool Pages::readLayout()
{
    const std::vector<std::uint8_t> head = read(0, kClassicLayout.firstLink);
    if (head.empty() || number(head.data(), 2) != kOrder) {
        return false;
    }
    const std::uint64_t version = number(&head[2], 2);
    mLayout = version == kBig ? kBigLayout : kClassicLayout;
    return version == kBig || version == kClassic;
}

/// The end of the values that an entry has elsewhere; 0: it has them itself.
std::uint64_t Pages::endOf(const std::uint8_t* entry) const
{
    const std::uint64_t type = number(entry + kTypeOffset, 2);
    const std::uint64_t count = number(entry + kCountOffset, mLayout.link);
    const std::uint64_t size = type < kTypeSizes.size() ? count * kTypeSizes[type] : 0;
    return size > mLayout.link ? number(entry + kCountOffset + mLayout.link, mLayout.link) + size
                               : 0;
}

/// @return false: it is not there to its end
bool Pages::readPage(std::uint64_t position, Page& page)
{
    const std::vector<std::uint8_t> count = read(position, mLayout.count);
    const std::uint64_t entries = count.empty() ? 0 : number(count.data(), mLayout.count);
    if (entries == 0 || entries > kMostEntries) {
        return false;
    }
    page.link = position + mLayout.count + entries * mLayout.entry;
    page.end = page.link + mLayout.link;
    const auto bytes = read(position + mLayout.count, entries * mLayout.entry);
    for (std::size_t at = 0; at < bytes.size(); at += mLayout.entry) {
        page.end = std::max(page.end, endOf(&bytes[at]));
    }
    return page.end <= mSize;
}

std::uint64_t Pages::read(const Page& from)
{
    const std::vector<std::uint8_t> link = read(from.link, mLayout.link);
    return link.empty() ? 0 : number(link.data(), mLayout.link);
}

std::uint32_t Pages::cut(std::uint32_t most)
{
    if (!readLayout()) {
        return 0;
    }
    Page last{.end = mLayout.firstLink + mLayout.link, .link = mLayout.firstLink};
    std::uint32_t pages = 0;
    for (Page page{}; pages < most; ++pages, last = page) {
        const std::uint64_t next = read(last);
        if (next == 0 || !readPage(next, page)) {
            break;
        }
    }
    constexpr std::array<std::uint8_t, 8> kNone{};
    mFile.seek(last.link);
    mFile.write(std::span(kNone).first(mLayout.link));
    mFile.resize(last.end);
    return pages;
}

} // namespace

std::uint32_t cutTiffPages(OutputFile& file, std::uint32_t most)
{
    return Pages(file).cut(most);
}

} // namespace telvo
