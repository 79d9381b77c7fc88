#include "hostcheck/HostCheck.h"

#include "hostcheck/HostIndex.h"
#include "plugin/HostAccess.h"
#include "plugin/HostSignature.h"

#include <QtCore/QStringList>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>

namespace hostcheck {

namespace {

QObject* lookUp(const QQmlApplicationEngine& engine, const Object& object)
{
    const QString name = QLatin1String(object.name);
    QWindow* window = firstTopLevelWindow();
    switch (object.way) {
    case Way::ContextProperty:
        return contextObject(&engine, name);
    case Way::RootChild:
        return findRootChild(&engine, name);
    case Way::Window:
        return window;
    case Way::WindowChild:
        return window == nullptr ? nullptr : window->findChild<QObject*>(name, Qt::FindChildrenRecursively);
    }
    return nullptr;
}

QByteArray bareName(const Member& member)
{
    const QByteArray signature = member.signature;
    return signature.left(signature.indexOf('('));
}

// Adds a space after each comma.
QString spaced(const QByteArray& signature)
{
    return QString::fromLatin1(signature).replace(QLatin1Char(','), QLatin1String(", "));
}

QString expectedText(const Member& member)
{
    const QString kind = member.kind == Kind::Signal     ? QStringLiteral("signal ")
                         : member.kind == Kind::Property ? QStringLiteral("property ")
                                                         : QString();
    const QString type = *member.type == '\0' ? QString() : QLatin1String(member.type) + QLatin1Char(' ');
    const QString access = member.written ? QStringLiteral(", read and written") : QString();
    return kind + type + spaced(member.signature) + access;
}

QString methodText(const QMetaMethod& method)
{
    const QString kind = method.methodType() == QMetaMethod::Signal ? QStringLiteral("signal ") : QString();
    return kind + QString::fromLatin1(method.typeName()) + QLatin1Char(' ') +
           spaced(method.methodSignature());
}

QString propertyText(const QMetaProperty& property)
{
    return QStringLiteral("property %1 %2%3")
        .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
             property.isWritable() ? QString() : QStringLiteral(", read only"));
}

std::vector<int> argumentTypes(const Member& member)
{
    QByteArray list = member.signature;
    list = list.mid(list.indexOf('(') + 1).chopped(1);
    std::vector<int> types;
    if (list.isEmpty())
        return types;
    const QList<QByteArray> names = list.split(',');
    for (const QByteArray& name : names)
        types.push_back(QMetaType::type(name));
    return types;
}

bool isCalled(const QMetaMethod& method, const Member& member)
{
    const std::vector<int> types = argumentTypes(member);
    return acceptsArguments(method, types.data(), static_cast<int>(types.size())) &&
           (*member.type == '\0' || hasResultType(method, QMetaType::type(member.type)));
}

// The library reads a property as QVariant and converts it; QMetaProperty::write also converts. A bool
// property is rejected for writing, because it would lose the value of an integer.
bool isUsed(const QMetaProperty& property, const Member& member)
{
    const int type = property.userType();
    const int wanted = QMetaType::type(member.type);
    if (!property.isReadable() || (member.written && !property.isWritable()))
        return false;
    if (type == wanted || type == QMetaType::QVariant)
        return true;
    if (member.written)
        return property.isEnumType() ||
               (type != QMetaType::Bool && QVariant(wanted, nullptr).canConvert(type));
    return QVariant(type, nullptr).canConvert(wanted);
}

void judgeSignal(const QObject& object, const Member& member, Finding& finding)
{
    // Signals are connected by their full signature, unlike methods.
    if (object.metaObject()->indexOfSignal(member.signature) != -1) {
        finding.state = State::Found;
        return;
    }
    const QMetaMethod method = findHostMethod(&object, bareName(member));
    if (!method.isValid())
        return;
    finding.state = State::OtherSignature;
    finding.found = methodText(method);
}

void judgeMethod(const QObject& object, const Member& member, Finding& finding)
{
    const QMetaMethod method = findHostMethod(&object, bareName(member));
    if (!method.isValid())
        return;
    const bool called = isCalled(method, member);
    finding.state = called ? State::Found : State::OtherSignature;
    finding.found = called ? QString() : methodText(method);
}

void judgeProperty(const QObject& object, const Member& member, Finding& finding)
{
    const QMetaProperty property = findHostProperty(&object, member.signature);
    if (!property.isValid())
        return;
    const bool used = isUsed(property, member);
    finding.state = used ? State::Found : State::OtherSignature;
    finding.found = used ? QString() : propertyText(property);
}

void judgeMember(const QObject& object, const Member& member, Finding& finding)
{
    switch (member.kind) {
    case Kind::Property:
        judgeProperty(object, member, finding);
        break;
    case Kind::Signal:
        judgeSignal(object, member, finding);
        break;
    default:
        judgeMethod(object, member, finding);
        break;
    }
}

QString effectOf(const Member& member, State state)
{
    switch (state) {
    case State::Missing:
        return QString::fromUtf8(member.effects.missing);
    case State::OtherSignature:
        return QString::fromUtf8(member.effects.otherSignature);
    case State::Found:
        break;
    }
    return QString();
}

Finding judge(const QObject* object, const QString& name, const Member& member)
{
    Finding finding{member.kind, State::Missing, name, expectedText(member), QString(), QString()};
    if (object != nullptr)
        judgeMember(*object, member, finding);
    finding.effect = effectOf(member, finding.state);
    return finding;
}

QString wordOf(State state)
{
    return state == State::Found     ? QStringLiteral("found")
           : state == State::Missing ? QStringLiteral("missing")
                                     : QStringLiteral("other signature");
}

int countOf(const std::vector<Finding>& findings, State state)
{
    int count = 0;
    for (const Finding& finding : findings)
        count += finding.state == state ? 1 : 0;
    return count;
}

} // namespace

std::vector<Finding> checkHost(const QQmlApplicationEngine& engine)
{
    std::vector<Finding> findings;
    for (const Object& object : hostIndex()) {
        const QString name = QLatin1String(object.name);
        const QObject* there = lookUp(engine, object);
        findings.push_back({Kind::Object, there == nullptr ? State::Missing : State::Found, name, QString(),
                            QString(), QString()});
        for (const Member& member : object.members)
            findings.push_back(judge(there, name, member));
    }
    return findings;
}

bool isComplete(const std::vector<Finding>& findings)
{
    return countOf(findings, State::Found) == static_cast<int>(findings.size());
}

QString tableOf(const std::vector<Finding>& findings)
{
    QStringList lines;
    for (const Finding& finding : findings) {
        const QString member = finding.kind == Kind::Object ? QStringLiteral("the object") : finding.expected;
        const QString instead =
            finding.found.isEmpty() ? QString() : QStringLiteral("   (found instead: %1)").arg(finding.found);
        lines.append(QStringLiteral("%1  %2  %3%4")
                         .arg(wordOf(finding.state), -15)
                         .arg(finding.object, -17)
                         .arg(member, instead));
        if (!finding.effect.isEmpty())
            lines.append(QString(17, QLatin1Char(' ')) + finding.effect);
    }
    lines.append(QStringLiteral("%1 checked: %2 found, %3 missing, %4 with another signature")
                     .arg(findings.size())
                     .arg(countOf(findings, State::Found))
                     .arg(countOf(findings, State::Missing))
                     .arg(countOf(findings, State::OtherSignature)));
    return lines.join(QLatin1Char('\n'));
}

} // namespace hostcheck
