#include "SingleImageBuffer.h"

#include "LogText.h"

void SingleImageBuffer::allocate(std::uint32_t size)
{
    release();
    auto buffer = std::make_unique<PvBuffer>();
    if (size != 0 && buffer->Alloc(size).IsOK()) {
        mBuffer = std::move(buffer);
    }
    logLine("Allocate single image buffer, Buffersize %d", static_cast<std::int32_t>(size));
}

void SingleImageBuffer::release()
{
    if (mBuffer != nullptr) {
        mBuffer->Free();
        mBuffer.reset();
    }
}

bool SingleImageBuffer::reserve(std::uint32_t size)
{
    if (mBuffer == nullptr || mBuffer->GetSize() < size) {
        allocate(size);
    }
    return mBuffer != nullptr;
}
