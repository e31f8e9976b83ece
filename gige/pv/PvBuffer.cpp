#include "PvBufferImpl.h"

bool PvBuffer::Impl::allocate(std::uint32_t size)
{
    free();
    // calloc rather than new: fresh pages come zeroed from the system and cost nothing until used.
    mMemory.reset(static_cast<std::uint8_t*>(std::calloc(size, 1)));
    if (mMemory == nullptr) {
        return size == 0;
    }
    setMemory({mMemory.get(), size});
    return true;
}

void PvBuffer::Impl::free()
{
    setMemory({});
    mMemory.reset();
}

PvBuffer::PvBuffer() : mImpl(std::make_unique<Impl>(*this)) {}

PvBuffer::~PvBuffer() = default;

PvResult PvBuffer::Alloc(std::uint32_t size)
{
    return mImpl->allocate(size) ? PvResult::Code::Ok : PvResult::Code::NotEnoughMemory;
}

void PvBuffer::Free()
{
    mImpl->free();
}

std::uint8_t* PvBuffer::GetDataPointer()
{
    return mImpl->memory().data();
}

std::uint32_t PvBuffer::GetSize() const
{
    return static_cast<std::uint32_t>(mImpl->memory().size());
}
