#include "fuzz/Bytes.h"

#include <algorithm>

std::uint8_t Bytes::byte()
{
    if (left_ == 0)
        return 0;
    --left_;
    return *at_++;
}

std::uint64_t Bytes::number(int count)
{
    std::uint64_t value = 0;
    for (int i = 0; i < count; ++i)
        value = (value << 8) | byte();
    return value;
}

std::string Bytes::text(std::size_t count)
{
    const std::size_t taken = std::min(count, left_);
    std::string bytes(reinterpret_cast<const char*>(at_), taken);
    at_ += taken;
    left_ -= taken;
    return bytes;
}
