#include "RegisterSources.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::int64_t kBitsPerByte = 8;
constexpr unsigned kBitsPerInteger = 64;
constexpr std::size_t kLongestInteger = 8; // bytes

std::uint64_t lowBits(unsigned width)
{
    return width >= kBitsPerInteger ? ~std::uint64_t{0} : (std::uint64_t{1} << width) - 1;
}

} // namespace

/// A bit field in terms of the assembled number: bit 0 is the least significant.
struct IntegerRegister::Bits {
    unsigned shift;
    unsigned width;

    std::uint64_t mask() const { return lowBits(width) << shift; }
};

IntegerRegister::IntegerRegister(std::shared_ptr<Register> registers, IntegerLayout layout)
    : mRegister(std::move(registers)), mLayout(layout)
{
}

Result<AccessMode> IntegerRegister::access(Evaluation& evaluation)
{
    return mRegister->access(evaluation);
}

Result<IntegerRegister::Bits> IntegerRegister::bits(const Register::Place& place) const
{
    if (place.length > kLongestInteger) {
        return Status::RegisterTooLarge;
    }
    const std::int64_t width = static_cast<std::int64_t>(place.length) * kBitsPerByte;
    if (!mLayout.field) {
        return Bits{0, static_cast<unsigned>(width)};
    }
    std::int64_t lsb = mLayout.field->lsb;
    std::int64_t msb = mLayout.field->msb;
    if (std::min(lsb, msb) < 0 || std::max(lsb, msb) >= width) {
        return Status::BadNode;
    }
    // Big-endian descriptions count bits from the most significant one, as the protocol's tables
    // do.
    if (mLayout.order == ByteOrder::BigEndian) {
        lsb = width - 1 - lsb;
        msb = width - 1 - msb;
    }
    if (lsb > msb) { // descriptions disagree on which is which
        std::swap(lsb, msb);
    }
    return Bits{static_cast<unsigned>(lsb), static_cast<unsigned>(msb - lsb + 1)};
}

ByteOrder IntegerRegister::order(Evaluation& evaluation, const Register::Place& place) const
{
    return evaluation.port().byteOrder(place.address, place.length, mLayout.order);
}

Result<Number> IntegerRegister::read(Evaluation& evaluation)
{
    const Result<Register::Place> place = mRegister->place(evaluation);
    const Result<Bits> bits = place ? this->bits(*place) : place.status();
    if (!bits) {
        return bits.status();
    }
    const auto content = mRegister->read(evaluation, *place);
    if (!content) {
        return content.status();
    }
    const std::uint64_t whole = assemble(*content, order(evaluation, *place));
    const std::uint64_t value = (whole & bits->mask()) >> bits->shift;
    // A field of one bit that is signed has the values 0 and -1.
    const std::uint64_t signBit = std::uint64_t{1} << (bits->width - 1);
    // Two's complement of the field's own width.
    const bool isNegative = mLayout.isSigned && (value & signBit) != 0;
    return Number(static_cast<std::int64_t>(isNegative ? value | ~lowBits(bits->width) : value));
}

Status IntegerRegister::write(Evaluation& evaluation, const Number& value)
{
    const Result<std::int64_t> integer = value.rounded();
    const Result<Register::Place> place = integer ? mRegister->place(evaluation) : integer.status();
    const Result<Bits> bits = place ? this->bits(*place) : place.status();
    if (!bits) {
        return bits.status();
    }
    std::uint64_t whole = static_cast<std::uint64_t>(*integer) << bits->shift;
    // A field shares its register with others, whose bits must come to no harm.
    if (bits->width < place->length * kBitsPerByte) {
        const Result<std::uint64_t> before = contentToPatch(evaluation, *place);
        if (!before) {
            return before.status();
        }
        whole = (*before & ~bits->mask()) | (whole & bits->mask());
    }
    std::array<std::uint8_t, kLongestInteger> buffer{};
    const std::span content = std::span(buffer).first(place->length);
    spread(whole, content, order(evaluation, *place));
    return mRegister->write(evaluation, *place, content);
}

// From the device, not from the cache: other bits of the register may clear themselves, and writing
// them back set would trigger them again.
Result<std::uint64_t> IntegerRegister::contentToPatch(Evaluation& evaluation,
                                                      const Register::Place& place) const
{
    const auto content = mRegister->ownAccess() == AccessMode::WriteOnly
                             ? mRegister->lastKnown(evaluation, place)
                             : mRegister->readDevice(evaluation, place);
    return content.transform(
        [&](const auto& bytes) { return assemble(bytes, order(evaluation, place)); });
}

Result<NumberRange> IntegerRegister::range(Evaluation& evaluation, const LimitChoice& /*wanted*/)
{
    const Result<Register::Place> place = mRegister->place(evaluation);
    const Result<Bits> bits = place ? this->bits(*place) : place.status();
    if (!bits) {
        return bits.status();
    }
    // Unsigned 64-bit patterns count as the signed numbers that they are here.
    const bool isSigned = mLayout.isSigned || bits->width == kBitsPerInteger;
    const auto highest =
        static_cast<std::int64_t>(lowBits(isSigned ? bits->width - 1 : bits->width));
    const std::int64_t lowest = isSigned ? -highest - 1 : 0;
    return NumberRange{Number(lowest), Number(highest), Number(std::int64_t{1})};
}

FloatRegister::FloatRegister(std::shared_ptr<Register> registers, ByteOrder order)
    : mRegister(std::move(registers)), mOrder(order)
{
}

Result<AccessMode> FloatRegister::access(Evaluation& evaluation)
{
    return mRegister->access(evaluation);
}

Result<Register::Place> FloatRegister::place(Evaluation& evaluation) const
{
    const Result<Register::Place> place = mRegister->place(evaluation);
    const bool isFloat =
        place && (place->length == sizeof(float) || place->length == sizeof(double));
    return place && !isFloat ? Status::BadNode : place;
}

Result<Number> FloatRegister::read(Evaluation& evaluation)
{
    const Result<Register::Place> place = this->place(evaluation);
    const auto content = place ? mRegister->read(evaluation, *place) : place.status();
    if (!content) {
        return content.status();
    }
    const ByteOrder order = evaluation.port().byteOrder(place->address, place->length, mOrder);
    const std::uint64_t bits = assemble(*content, order);
    return Number(place->length == sizeof(float)
                      ? double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))}
                      : std::bit_cast<double>(bits));
}

Status FloatRegister::write(Evaluation& evaluation, const Number& value)
{
    const Result<Register::Place> place = this->place(evaluation);
    if (!place) {
        return place.status();
    }
    const double number = value.toDouble();
    const std::uint64_t bits = place->length == sizeof(float)
                                   ? std::bit_cast<std::uint32_t>(static_cast<float>(number))
                                   : std::bit_cast<std::uint64_t>(number);
    std::array<std::uint8_t, sizeof(double)> buffer{};
    const std::span content = std::span(buffer).first(place->length);
    spread(bits, content, evaluation.port().byteOrder(place->address, place->length, mOrder));
    return mRegister->write(evaluation, *place, content);
}

Result<NumberRange> FloatRegister::range(Evaluation& evaluation, const LimitChoice& /*wanted*/)
{
    const Result<Register::Place> place = this->place(evaluation);
    if (!place) {
        return place.status();
    }
    const double highest = place->length == sizeof(float)
                               ? double{std::numeric_limits<float>::max()}
                               : std::numeric_limits<double>::max();
    return NumberRange{Number(-highest), Number(highest), {}};
}

} // namespace gige::genapi
