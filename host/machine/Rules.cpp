#include "host/machine/RuleParts.h"

namespace host {

QString refusal(const Machine& machine, int function, const QVariantMap& params)
{
    for (const auto* table : {&diskRules(), &partitionRules()}) {
        const auto rule = table->find(static_cast<Function>(function));
        if (rule != table->end())
            return rule->second(Question{machine, params});
    }
    return QStringLiteral("there is no function %1").arg(function);
}

} // namespace host
