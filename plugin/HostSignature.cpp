#include "plugin/HostSignature.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaType>

namespace {

// A narrow integer can be read from the address of a wider one on little-endian systems only.
constexpr bool kCanWiden = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;

bool isInteger(int type)
{
    switch (type) {
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return (QMetaType::typeFlags(type) & QMetaType::IsEnumeration) != 0;
    }
}

// The type that the class registers on request; this works for types with Q_DECLARE_METATYPE.
int registeredByClass(const QMetaMethod& method, int parameter)
{
    const QMetaObject* meta = method.enclosingMetaObject();
    int type = QMetaType::UnknownType;
    void* places[] = {&type, &parameter};
    meta->static_metacall(QMetaObject::RegisterMethodArgumentMetaType,
                          method.methodIndex() - meta->methodOffset(), places);
    return type < 0 ? int(QMetaType::UnknownType) : type;
}

// "Class::Name" of an enumeration that the method's class or a base class declares with Q_ENUM, even if the
// method's signature omits the class. Empty for any other type, including a flag type, which is a class.
QByteArray declaredEnumeration(const QMetaMethod& method, int parameter)
{
    const QByteArray typeName = method.parameterTypes().at(parameter);
    const int colons = typeName.lastIndexOf("::");
    const QByteArray name = colons < 0 ? typeName : typeName.mid(colons + 2);
    const QMetaObject* meta = method.enclosingMetaObject();
    const QMetaEnum found = meta->enumerator(meta->indexOfEnumerator(name.constData()));
    if (!found.isValid() || (found.isFlag() && name == found.name()))
        return QByteArray();
    const QByteArray scope = found.scope();
    const QByteArray typeScope = colons < 0 ? scope : typeName.left(colons);
    return scope == typeScope || scope.endsWith("::" + typeScope) ? scope + "::" + name : QByteArray();
}

} // namespace

Passing passingOf(const QMetaMethod& method, int parameter, int argument)
{
    int type = method.parameterType(parameter);
    if (type == argument)
        return Passing::Direct;
    if (!isInteger(argument))
        return Passing::Rejected;
    if (type == QMetaType::UnknownType)
        type = registeredByClass(method, parameter);
    if (type == QMetaType::UnknownType) {
        const QByteArray enumeration = declaredEnumeration(method, parameter);
        if (enumeration.isEmpty())
            return Passing::Rejected;
        type = QMetaType::type(enumeration);
        if (type == QMetaType::UnknownType)
            return kCanWiden ? Passing::Widened : Passing::Rejected;
    }
    return isInteger(type) && QMetaType::sizeOf(type) == QMetaType::sizeOf(argument) ? Passing::Direct
                                                                                     : Passing::Rejected;
}

bool acceptsArguments(const QMetaMethod& method, const int* arguments, int count)
{
    if (method.parameterCount() > count)
        return false;
    for (int i = 0; i < method.parameterCount(); ++i) {
        if (passingOf(method, i, arguments[i]) == Passing::Rejected)
            return false;
    }
    return true;
}

bool hasResultType(const QMetaMethod& method, int result)
{
    return method.returnType() == result;
}
