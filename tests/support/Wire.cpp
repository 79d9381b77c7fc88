#include "tests/support/Wire.h"

#include <stdexcept>

namespace wire {

namespace {

std::string bigEndian(std::uint64_t value, int bytes)
{
    std::string out;
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
        out += static_cast<char>((value >> shift) & 0xff);
    return out;
}

// Keeps the bytes that were read, so that a message can be compared byte for byte.
class Keeping : public Source
{
public:
    explicit Keeping(Source& source) : source_(source) {}
    std::string take(std::size_t count) override
    {
        std::string bytes = source_.take(count);
        kept += bytes;
        return bytes;
    }
    std::uint64_t number(int bytes)
    {
        std::uint64_t value = 0;
        for (const char byte : take(static_cast<std::size_t>(bytes)))
            value = (value << 8) | static_cast<unsigned char>(byte);
        return value;
    }
    std::int32_t word() { return static_cast<std::int32_t>(number(4)); }
    std::string text() { return take(static_cast<std::size_t>(word())); }
    std::string kept;

private:
    Source& source_;
};

Value readValue(Keeping& in, int type);

Value readStruct(Keeping& in)
{
    Value value;
    value.type = Struct;
    for (int type = static_cast<int>(in.number(1)); type != Stop; type = static_cast<int>(in.number(1))) {
        const int id = static_cast<int>(in.number(2));
        value.fields.emplace_back(id, readValue(in, type));
    }
    return value;
}

Value readList(Keeping& in)
{
    Value value;
    value.type = List;
    value.itemType = static_cast<int>(in.number(1));
    for (int left = in.word(); left > 0; --left)
        value.items.push_back(readValue(in, value.itemType));
    return value;
}

Value readValue(Keeping& in, int type)
{
    Value value;
    value.type = type;
    switch (type) {
    case Bool:
        value.number = static_cast<std::int64_t>(in.number(1));
        break;
    case I32:
        value.number = in.word();
        break;
    case I64:
        value.number = static_cast<std::int64_t>(in.number(8));
        break;
    case String:
        value.bytes = in.text();
        break;
    case Struct:
        return readStruct(in);
    case List:
        return readList(in);
    default:
        throw std::runtime_error("unexpected field type on the wire");
    }
    return value;
}

} // namespace

std::string i32(std::int32_t value)
{
    return bigEndian(static_cast<std::uint32_t>(value), 4);
}

std::string i64(std::int64_t value)
{
    return bigEndian(static_cast<std::uint64_t>(value), 8);
}

std::string text(const std::string& value)
{
    return i32(static_cast<std::int32_t>(value.size())) + value;
}

std::string fieldHeader(int type, int id)
{
    return bigEndian(static_cast<std::uint64_t>(type), 1) + bigEndian(static_cast<std::uint64_t>(id), 2);
}

std::string strictHeader(const std::string& method, std::int32_t sequence, int messageType)
{
    return bigEndian(0x80010000u | static_cast<unsigned>(messageType), 4) + text(method) + i32(sequence);
}

std::string oldHeader(const std::string& method, std::int32_t sequence, int messageType)
{
    return text(method) + static_cast<char>(messageType) + i32(sequence);
}

Fields& Fields::boolean(int id, bool value)
{
    return raw(Bool, id, std::string(1, value ? '\1' : '\0'));
}

Fields& Fields::number(int id, std::int32_t value)
{
    return raw(I32, id, i32(value));
}

Fields& Fields::big(int id, std::int64_t value)
{
    return raw(I64, id, i64(value));
}

Fields& Fields::string(int id, const std::string& value)
{
    return raw(String, id, text(value));
}

Fields& Fields::raw(int type, int id, const std::string& bytes)
{
    bytes_ += fieldHeader(type, id) + bytes;
    return *this;
}

std::string call(const std::string& method, std::int32_t sequence, const Fields& fields)
{
    return strictHeader(method, sequence) + fields.end();
}

Value Value::field(int id) const
{
    for (const auto& entry : fields) {
        if (entry.first == id)
            return entry.second;
    }
    return Value();
}

std::vector<int> Value::fieldIds() const
{
    std::vector<int> ids;
    for (const auto& entry : fields)
        ids.push_back(entry.first);
    return ids;
}

Message readMessage(Source& source)
{
    Keeping in(source);
    Message message;
    const auto first = static_cast<std::uint32_t>(in.number(4));
    if ((first & 0x80000000u) == 0)
        throw std::runtime_error("not a header in the strict form");
    message.version = first & 0xffffff00u;
    message.type = static_cast<int>(first & 0xffu);
    message.name = in.text();
    message.sequence = in.word();
    message.body = readStruct(in);
    message.raw = in.kept;
    return message;
}

} // namespace wire
