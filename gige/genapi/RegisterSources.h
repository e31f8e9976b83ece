/// Numbers inside registers.
#ifndef TELVO_GIGE_GENAPI_REGISTERSOURCES_H
#define TELVO_GIGE_GENAPI_REGISTERSOURCES_H

#include "NumberSource.h"
#include "Register.h"

#include <memory>
#include <optional>

namespace gige::genapi
{

/// The bits of a masked register, as the description numbers them: in little-endian registers bit 0
/// is the least significant, in big-endian ones the most significant of all the register's bits.
struct BitField {
    std::int64_t lsb;
    std::int64_t msb;
};

struct IntegerLayout {
    ByteOrder order = ByteOrder::LittleEndian;
    bool isSigned = false;
    std::optional<BitField> field; // none: the whole register
};

/// An integer of 1 to 8 bytes, or some of its bits. Writing bits reads the register first.
class IntegerRegister : public NumberSource
{
  public:
    IntegerRegister(std::shared_ptr<Register> registers, IntegerLayout layout);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    struct Bits;
    Result<Bits> bits(const Register::Place& place) const;
    Result<std::uint64_t> contentToPatch(Evaluation& evaluation,
                                         const Register::Place& place) const;
    ByteOrder order(Evaluation& evaluation, const Register::Place& place) const;

    std::shared_ptr<Register> mRegister;
    IntegerLayout mLayout;
};

/// An IEEE 754 number of 4 or 8 bytes.
class FloatRegister : public NumberSource
{
  public:
    FloatRegister(std::shared_ptr<Register> registers, ByteOrder order);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    Result<Register::Place> place(Evaluation& evaluation) const;

    std::shared_ptr<Register> mRegister;
    ByteOrder mOrder;
};

} // namespace gige::genapi

#endif
