#include "host/machine/RuleParts.h"

namespace host {

namespace {

using Rules = std::map<Function, Rule>;

Rejection rejectionIn(std::initializer_list<const Rules*> tables, const Machine& machine, int function,
                      const QVariantMap& params)
{
    for (const Rules* table : tables) {
        const auto rule = table->find(static_cast<Function>(function));
        if (rule != table->end())
            return rule->second(Question{machine, params});
    }
    return Text(QT_TRANSLATE_NOOP("Sandbox", "Function %1 does not exist."), {QString::number(function)});
}

} // namespace

Rejection orderRejection(const Machine& machine, int function, const QVariantMap& params)
{
    return rejectionIn({&diskRules(), &partitionRules()}, machine, function, params);
}

Rejection taskRejection(const Machine& machine, int function, const QVariantMap& params)
{
    return rejectionIn({&diskRules(), &partitionRules(), &guidedRules()}, machine, function, params);
}

} // namespace host
