#include "host/machine/Functions.h"

#include <QtCore/QMetaEnum>

namespace host {

QString functionName(int number)
{
    return QString::fromLatin1(QMetaEnum::fromType<Function>().valueToKey(number));
}

int functionNumber(const QString& name)
{
    const QMetaEnum functions = QMetaEnum::fromType<Function>();
    for (int i = 0; i < functions.keyCount(); ++i) {
        if (name.compare(QLatin1String(functions.key(i)), Qt::CaseInsensitive) == 0)
            return functions.value(i);
    }
    return -1;
}

QStringList taskNames()
{
    const QMetaEnum functions = QMetaEnum::fromType<Function>();
    QStringList names;
    for (int i = 0; i < functions.keyCount(); ++i) {
        const auto function = static_cast<Function>(functions.value(i));
        // These take effect at once.
        if (function != Function::InstallPreOs && function != Function::DisablePreOs)
            names.append(QLatin1String(functions.key(i)));
    }
    return names;
}

} // namespace host
