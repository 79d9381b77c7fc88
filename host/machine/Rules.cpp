#include "host/machine/RuleParts.h"

namespace host {

namespace {

using Rules = std::map<Function, Rule>;

Text answerOf(std::initializer_list<const Rules*> tables, const Machine& machine, int function,
              const QVariantMap& params)
{
    for (const Rules* table : tables) {
        const auto rule = table->find(static_cast<Function>(function));
        if (rule != table->end())
            return rule->second(Question{machine, params});
    }
    return Text(QT_TRANSLATE_NOOP("Sandbox", "there is no function %1"), {QString::number(function)});
}

} // namespace

Text refusal(const Machine& machine, int function, const QVariantMap& params)
{
    return answerOf({&diskRules(), &partitionRules()}, machine, function, params);
}

Text taskRefusal(const Machine& machine, int function, const QVariantMap& params)
{
    return answerOf({&diskRules(), &partitionRules(), &guidedRules()}, machine, function, params);
}

} // namespace host
