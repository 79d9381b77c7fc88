#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace zorcall {

/// One value of the protocol, interpreted by its Type. An absent field or argument is std::monostate.
/// Integers of both widths are stored in 64 bits.
struct Value
{
    /// The entries of a list, or the fields of a record in the order of the description, without trailing
    /// absent ones.
    using Parts = std::vector<Value>;
    std::variant<std::monostate, bool, std::int64_t, std::string, Parts> content;

    bool absent() const { return std::holds_alternative<std::monostate>(content); }
    /// These return the default of the type for an absent value.
    bool boolean() const { return content.index() == 1 && std::get<bool>(content); }
    std::int64_t integer() const { return content.index() == 2 ? std::get<std::int64_t>(content) : 0; }
    const std::string& text() const;
    const Parts& parts() const;
    /// The part at @p index, or an absent value.
    const Value& part(std::size_t index) const;
};

inline const std::string& Value::text() const
{
    static const std::string empty;
    const std::string* held = std::get_if<std::string>(&content);
    return held != nullptr ? *held : empty;
}

inline const Value::Parts& Value::parts() const
{
    static const Parts empty;
    const Parts* held = std::get_if<Parts>(&content);
    return held != nullptr ? *held : empty;
}

inline const Value& Value::part(std::size_t index) const
{
    static const Value nothing;
    return index < parts().size() ? parts()[index] : nothing;
}

} // namespace zorcall
