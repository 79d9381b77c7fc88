#pragma once

#include <QtCore/QByteArray>

#include <cstdint>

/// Parts of binary protocol messages.
namespace wire {

constexpr char kReply = 2;
constexpr char kException = 3;

inline QByteArray number(std::uint64_t value, int bytes)
{
    QByteArray result;
    for (int i = bytes - 1; i >= 0; --i)
        result.append(static_cast<char>(value >> (8 * i)));
    return result;
}
inline QByteArray i16(int value)
{
    return number(static_cast<std::uint16_t>(value), 2);
}
inline QByteArray i32(std::int64_t value)
{
    return number(static_cast<std::uint32_t>(value), 4);
}
inline QByteArray i64(std::int64_t value)
{
    return number(static_cast<std::uint64_t>(value), 8);
}
inline QByteArray text(const QByteArray& value)
{
    return i32(value.size()) + value;
}
inline QByteArray byte(int value)
{
    return QByteArray(1, static_cast<char>(value));
}

/// Header of a message in the strict form.
inline QByteArray message(int type, const QByteArray& name, std::int32_t sequence)
{
    return i32(0x80010000LL | type) + text(name) + i32(sequence);
}

/// Header of a field; type codes are bool 2, double 4, i32 8, i64 10, string 11, struct 12, map 13, list 15.
inline QByteArray field(int type, int id)
{
    return byte(type) + i16(id);
}
inline QByteArray stop()
{
    return byte(0);
}

/// The sequence number of a call in the strict form.
inline std::int32_t sequenceOf(const QByteArray& call)
{
    const auto at = [&call](int i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(call[i]));
    };
    const int position = 8 + static_cast<int>(at(7));
    return static_cast<std::int32_t>(at(position) << 24 | at(position + 1) << 16 | at(position + 2) << 8 |
                                     at(position + 3));
}

} // namespace wire
