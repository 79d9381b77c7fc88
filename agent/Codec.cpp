#include "agent/Codec.h"

#include "agent/Failure.h"
#include "agent/Text.h"

#include <thrift/TApplicationException.h>

namespace zorcall {

namespace protocol = apache::thrift::protocol;
using protocol::TProtocol;
using protocol::TType;

namespace {

TType wireType(Kind kind)
{
    switch (kind) {
    case Kind::Bool:
        return protocol::T_BOOL;
    case Kind::I32:
        return protocol::T_I32;
    case Kind::I64:
        return protocol::T_I64;
    case Kind::String:
        return protocol::T_STRING;
    case Kind::Record:
        return protocol::T_STRUCT;
    case Kind::List:
        return protocol::T_LIST;
    }
    return protocol::T_STOP;
}

// Arguments are simple values: no method takes a record or a list.
void writeValue(TProtocol& out, Kind kind, const Value& value)
{
    if (kind == Kind::Bool)
        out.writeBool(value.boolean());
    else if (kind == Kind::I32)
        out.writeI32(static_cast<std::int32_t>(value.integer()));
    else if (kind == Kind::I64)
        out.writeI64(value.integer());
    else
        out.writeString(value.text());
}

[[noreturn]] void reject(const std::string& reason)
{
    throw Failure(BadReply, "invalid reply: " + reason);
}

class Reader
{
public:
    Reader(TProtocol& in, const Interface& service) : in_(in), service_(service) {}

    Value read(const Type& type)
    {
        switch (type.kind) {
        case Kind::Bool:
            return readBool();
        case Kind::I32:
            return readI32();
        case Kind::I64:
            return readI64();
        case Kind::String:
            return readString();
        case Kind::Record:
            return Value{readFields(service_.record(type.record).fields)};
        case Kind::List:
            return readList(type.entry());
        }
        return Value{};
    }

    Value::Parts readFields(const std::vector<Field>& fields)
    {
        Value::Parts parts;
        std::string name;
        in_.readStructBegin(name);
        for (;;) {
            TType type = protocol::T_STOP;
            std::int16_t id = 0;
            in_.readFieldBegin(name, type, id);
            if (type == protocol::T_STOP)
                break;
            readField(fields, type, id, &parts);
            in_.readFieldEnd();
        }
        in_.readStructEnd();
        return parts;
    }

private:
    void readField(const std::vector<Field>& fields, TType type, std::int16_t id, Value::Parts* parts)
    {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].id != id || wireType(fields[i].type.kind) != type)
                continue;
            if (parts->size() <= i)
                parts->resize(i + 1);
            (*parts)[i] = read(fields[i].type);
            return;
        }
        in_.skip(type);
    }

    Value readList(const Type& entry)
    {
        TType type = protocol::T_STOP;
        std::uint32_t size = 0;
        in_.readListBegin(type, size);
        if (size != 0 && type != wireType(entry.kind))
            reject("a list contains entries of another type");
        // Not reserved in advance, because the size is untrusted.
        Value::Parts entries;
        for (std::uint32_t i = 0; i < size; ++i)
            entries.push_back(read(entry));
        in_.readListEnd();
        return Value{std::move(entries)};
    }

    Value readBool()
    {
        bool value = false;
        in_.readBool(value);
        return Value{value};
    }

    Value readI32()
    {
        std::int32_t value = 0;
        in_.readI32(value);
        return Value{static_cast<std::int64_t>(value)};
    }

    Value readI64()
    {
        std::int64_t value = 0;
        in_.readI64(value);
        return Value{value};
    }

    Value readString()
    {
        std::string value;
        in_.readString(value);
        return Value{std::move(value)};
    }

    TProtocol& in_;
    const Interface& service_;
};

[[noreturn]] void readException(TProtocol& in)
{
    apache::thrift::TApplicationException exception;
    exception.read(&in);
    in.readMessageEnd();
    throw ServiceException(exception.what());
}

} // namespace

void writeCall(TProtocol& out, const Method& method, const Value::Parts& arguments, std::int32_t sequence)
{
    out.writeMessageBegin(method.name, protocol::T_CALL, sequence);
    out.writeStructBegin(method.name.c_str());
    for (std::size_t i = 0; i < method.arguments.size(); ++i) {
        const Field& field = method.arguments[i];
        if (arguments[i].absent())
            continue;
        out.writeFieldBegin(field.name.c_str(), wireType(field.type.kind),
                            static_cast<std::int16_t>(field.id));
        writeValue(out, field.type.kind, arguments[i]);
        out.writeFieldEnd();
    }
    out.writeFieldStop();
    out.writeStructEnd();
    out.writeMessageEnd();
}

Value readReply(TProtocol& in, const Interface& service, const Method& method, std::int32_t sequence)
{
    std::string name;
    protocol::TMessageType type = protocol::T_REPLY;
    std::int32_t receivedSequence = 0;
    in.readMessageBegin(name, type, receivedSequence);
    if (type != protocol::T_REPLY && type != protocol::T_EXCEPTION)
        reject("its message type is " + std::to_string(static_cast<int>(type)));
    if (name != method.name)
        reject("it belongs to '" + oneLine(name) + "'");
    if (receivedSequence != sequence)
        reject("it belongs to call number " + std::to_string(receivedSequence) + " instead of " +
               std::to_string(sequence));
    if (type == protocol::T_EXCEPTION)
        readException(in);
    const Value::Parts parts = Reader(in, service).readFields({Field{0, "success", method.result, {}}});
    in.readMessageEnd();
    if (parts.empty())
        reject("it contains no result of type " + method.result.name());
    return parts.front();
}

} // namespace zorcall
