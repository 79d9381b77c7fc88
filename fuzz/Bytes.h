#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The bytes of one input, read from the front.
class Bytes
{
public:
    Bytes(const std::uint8_t* data, std::size_t size) : at_(data), left_(size) {}

    std::size_t left() const { return left_; }
    /// The next byte; 0 after the end.
    std::uint8_t byte();
    /// The next @p count bytes as a number; missing bytes read as 0.
    std::uint64_t number(int count);
    /// At most @p count bytes.
    std::string text(std::size_t count);
    std::string rest() { return text(left_); }

private:
    const std::uint8_t* at_;
    std::size_t left_;
};
