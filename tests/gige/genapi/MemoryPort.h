#ifndef TELVO_TESTS_GIGE_GENAPI_MEMORYPORT_H
#define TELVO_TESTS_GIGE_GENAPI_MEMORYPORT_H

#include "RegisterPort.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace gige::genapi
{

/// A device that is nothing but memory from one address on. Records the accesses it gets as "R
/// 8000+4" (READMEM), "W …" (WRITEMEM), "r 8000" (READREG) and "w 8000" (WRITEREG); fails on
/// demand.
class MemoryPort : public RegisterPort
{
  public:
    /// @param contents  hexadecimal digits, blanks between them ignored
    MemoryPort(std::uint64_t start, const std::string& contents) : mStart(start)
    {
        std::string digits;
        std::ranges::copy_if(contents, std::back_inserter(digits), [](char c) { return c != ' '; });
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
            mBytes.push_back(
                static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
        }
    }

    Status readMemory(std::uint64_t address, std::span<std::uint8_t> bytes) override
    {
        record("R ", address, bytes.size());
        const Status status = check(address, bytes.size());
        if (status == Status::Ok) {
            std::ranges::copy(at(address).first(bytes.size()), bytes.begin());
        }
        return status;
    }

    Status writeMemory(std::uint64_t address, std::span<const std::uint8_t> bytes) override
    {
        record("W ", address, bytes.size());
        const Status status = check(address, bytes.size());
        if (status == Status::Ok) {
            std::ranges::copy(bytes, at(address).begin());
        }
        return status;
    }

    Status readRegister(std::uint64_t address, std::uint32_t& value) override
    {
        mAccesses.push_back("r " + hexadecimal(address));
        const Status status = check(address, 4);
        if (status == Status::Ok) {
            const auto bytes = at(address);
            value = std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U |
                    std::uint32_t{bytes[2]} << 8U | std::uint32_t{bytes[3]};
        }
        return status;
    }

    Status writeRegister(std::uint64_t address, std::uint32_t value) override
    {
        mAccesses.push_back("w " + hexadecimal(address));
        const Status status = check(address, 4);
        for (std::size_t i = 0; status == Status::Ok && i < 4; ++i) {
            at(address)[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
        }
        return status;
    }

    /// Bytes as upper-case hexadecimal digits.
    std::string hex(std::uint64_t address, std::size_t size) const
    {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        std::string text;
        for (std::size_t i = 0; i < size; ++i) {
            const std::uint8_t byte = mBytes.at(address - mStart + i);
            text += kDigits[byte >> 4U];
            text += kDigits[byte & 0xFU];
        }
        return text;
    }

    /// Changes the memory behind the host's back.
    void set(std::uint64_t address, const std::string& digits)
    {
        const MemoryPort other(0, digits);
        std::ranges::copy(other.mBytes, at(address).begin());
    }

    /// What all accesses answer from now on; Ok lets them happen.
    void failWith(Status status) { mFailure = status; }

    /// The accesses since the last call.
    std::vector<std::string> takeAccesses() { return std::exchange(mAccesses, {}); }

  private:
    static std::string hexadecimal(std::uint64_t value)
    {
        std::string text;
        for (; value != 0; value /= 16) {
            text.insert(text.begin(), "0123456789abcdef"[value % 16]);
        }
        return text.empty() ? "0" : text;
    }

    void record(const char* kind, std::uint64_t address, std::size_t size)
    {
        mAccesses.push_back(kind + hexadecimal(address) + "+" + std::to_string(size));
    }

    Status check(std::uint64_t address, std::size_t size) const
    {
        if (mFailure != Status::Ok) {
            return mFailure;
        }
        const bool isAligned = address % 4 == 0 && size % 4 == 0;
        const bool isInside = address >= mStart && address - mStart <= mBytes.size() &&
                              size <= mBytes.size() - (address - mStart);
        return isAligned && isInside ? Status::Ok : Status::PortBadAddress;
    }

    std::span<std::uint8_t> at(std::uint64_t address)
    {
        return std::span(mBytes).subspan(address - mStart);
    }

    std::uint64_t mStart;
    std::vector<std::uint8_t> mBytes;
    std::vector<std::string> mAccesses;
    Status mFailure = Status::Ok;
};

} // namespace gige::genapi

#endif
