#include "fuzz/EveryMethod.h"

#include "tools/ZorHandle.h"

#include <tuple>
#include <type_traits>

namespace {

// The argument values of one call.
class Values
{
public:
    Values(int disk, int other, const std::string& letter) : numbers_{disk, other}, letters_{letter, "e"} {}

    template <class Argument> Argument next()
    {
        if constexpr (std::is_same_v<Argument, std::string>)
            return letters_[nextLetter_++ % 2];
        else if constexpr (std::is_same_v<Argument, bool>)
            return true;
        else
            return numbers_[nextNumber_++ % 2];
    }

private:
    int numbers_[2];
    std::string letters_[2];
    unsigned nextNumber_ = 0;
    unsigned nextLetter_ = 0;
};

// A tuple, because only the elements of a braced list are evaluated in order.
template <class... Arguments> std::tuple<std::decay_t<Arguments>...> valuesFor(Values& values)
{
    return {values.next<std::decay_t<Arguments>>()...};
}

template <class Result, class... Arguments>
void callMethod(CZorHandle& tools, void (CZorHandle::*method)(Result&, Arguments...), Values values)
{
    Result result;
    std::apply([&](const auto&... arguments) { (tools.*method)(result, arguments...); },
               valuesFor<Arguments...>(values));
}

template <class... Arguments>
void callMethod(CZorHandle& tools, bool (CZorHandle::*method)(Arguments...), Values values)
{
    std::apply([&](const auto&... arguments) { (tools.*method)(arguments...); },
               valuesFor<Arguments...>(values));
}

} // namespace

void callEveryMethod(CZorHandle& tools, int disk, int other, const std::string& letter)
{
    const Values values(disk, other, letter);
#define METHOD(name) callMethod(tools, &CZorHandle::name, values);
#include "MethodNames.inc"
#undef METHOD
}
