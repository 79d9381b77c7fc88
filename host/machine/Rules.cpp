#include "host/machine/RuleParts.h"

namespace host {

namespace {

using Rules = std::map<Function, Rule>;

QString answerOf(std::initializer_list<const Rules*> tables, const Machine& machine, int function,
                 const QVariantMap& params)
{
    for (const Rules* table : tables) {
        const auto rule = table->find(static_cast<Function>(function));
        if (rule != table->end())
            return rule->second(Question{machine, params});
    }
    return QStringLiteral("there is no function %1").arg(function);
}

} // namespace

QString refusal(const Machine& machine, int function, const QVariantMap& params)
{
    return answerOf({&diskRules(), &partitionRules()}, machine, function, params);
}

QString taskRefusal(const Machine& machine, int function, const QVariantMap& params)
{
    return answerOf({&diskRules(), &partitionRules(), &guidedRules()}, machine, function, params);
}

} // namespace host
