#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The binary protocol, written by hand, so that the wire format is compared with bytes and not with itself.
namespace wire {

enum Type : int { Stop = 0, Bool = 2, I32 = 8, I64 = 10, String = 11, Struct = 12, List = 15 };
enum MessageType : int { Call = 1, Reply = 2, Exception = 3, Oneway = 4 };

std::string i32(std::int32_t value);
std::string i64(std::int64_t value);
/// Length and bytes.
std::string text(const std::string& value);
std::string fieldHeader(int type, int id);

/// The header with the version word.
std::string strictHeader(const std::string& method, std::int32_t sequence, int messageType = Call);
/// The older header: name, type byte, sequence.
std::string oldHeader(const std::string& method, std::int32_t sequence, int messageType = Call);

/// The fields of a struct, in the order of the calls; end() gives the bytes with the stop.
class Fields
{
public:
    Fields& boolean(int id, bool value);
    Fields& number(int id, std::int32_t value);
    Fields& big(int id, std::int64_t value);
    Fields& string(int id, const std::string& value);
    Fields& raw(int type, int id, const std::string& bytes);
    std::string end() const { return bytes_ + '\0'; }

private:
    std::string bytes_;
};

/// A whole call in the strict form.
std::string call(const std::string& method, std::int32_t sequence, const Fields& fields = Fields());

/// A decoded value. The type selects the member that is set.
struct Value
{
    int type = Stop;
    std::int64_t number = 0;
    std::string bytes;
    std::vector<std::pair<int, Value>> fields; ///< id and value, in the order of the wire
    std::vector<Value> items;
    int itemType = Stop;

    /// The field of that id; a value of type Stop if there is none.
    Value field(int id) const;
    std::vector<int> fieldIds() const;
};

struct Message
{
    std::uint32_t version = 0; ///< the first word without the message type
    int type = 0;
    std::string name;
    std::int32_t sequence = 0;
    Value body;
    std::string raw; ///< all its bytes
};

/// The input of a decoder. Throws std::runtime_error at its end.
class Source
{
public:
    virtual ~Source() = default;
    virtual std::string take(std::size_t count) = 0;
};

/// Reads one message in the strict form. Throws std::runtime_error for anything else.
Message readMessage(Source& source);

} // namespace wire
