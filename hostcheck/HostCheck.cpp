#include "hostcheck/HostCheck.h"

#include "hostcheck/HostIndex.h"
#include "plugin/HostAccess.h"

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

// "int,QVariantMap" reads better as "int, QVariantMap".
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

// Types are compared as what they are: QVariantMap has another spelling too.
bool hasArguments(const QMetaMethod& method, const Member& member)
{
    QByteArray list = member.signature;
    list = list.mid(list.indexOf('(') + 1).chopped(1);
    const QList<QByteArray> types = list.isEmpty() ? QList<QByteArray>() : list.split(',');
    if (types.size() != method.parameterCount())
        return false;
    for (int i = 0; i < types.size(); ++i) {
        if (method.parameterType(i) != QMetaType::type(types.at(i)))
            return false;
    }
    return true;
}

bool hasResult(const QMetaMethod& method, const Member& member)
{
    return *member.type == '\0' || method.returnType() == QMetaType::type(member.type);
}

// A property declared as `var` holds what is put into it.
bool fits(const QMetaProperty& property, const Member& member)
{
    const int type = property.userType();
    return property.isReadable() && (!member.written || property.isWritable()) &&
           (type == QMetaType::type(member.type) || type == QMetaType::QVariant);
}

void judgeMethod(const QObject& object, const Member& member, Finding& finding)
{
    const QMetaMethod method = findHostMethod(&object, bareName(member));
    if (!method.isValid())
        return;
    const bool isSignal = method.methodType() == QMetaMethod::Signal;
    const bool fitting = hasArguments(method, member) && hasResult(method, member) &&
                         (member.kind != Kind::Signal || isSignal);
    finding.state = fitting ? State::Found : State::OtherSignature;
    finding.found = fitting ? QString() : methodText(method);
}

void judgeProperty(const QObject& object, const Member& member, Finding& finding)
{
    const QMetaProperty property = findHostProperty(&object, member.signature);
    if (!property.isValid())
        return;
    const bool fitting = fits(property, member);
    finding.state = fitting ? State::Found : State::OtherSignature;
    finding.found = fitting ? QString() : propertyText(property);
}

Finding judge(const QObject* object, const QString& name, const Member& member)
{
    Finding finding{member.kind, State::Missing, name, expectedText(member), QString()};
    if (object == nullptr)
        return finding;
    if (member.kind == Kind::Property)
        judgeProperty(*object, member, finding);
    else
        judgeMethod(*object, member, finding);
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
        findings.push_back(
            {Kind::Object, there == nullptr ? State::Missing : State::Found, name, QString(), QString()});
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
            finding.found.isEmpty() ? QString() : QStringLiteral("   (there is: %1)").arg(finding.found);
        lines.append(QStringLiteral("%1  %2  %3%4")
                         .arg(wordOf(finding.state), -15)
                         .arg(finding.object, -17)
                         .arg(member, instead));
    }
    lines.append(QStringLiteral("%1 looked for: %2 found, %3 missing, %4 with another signature")
                     .arg(findings.size())
                     .arg(countOf(findings, State::Found))
                     .arg(countOf(findings, State::Missing))
                     .arg(countOf(findings, State::OtherSignature)));
    return lines.join(QLatin1Char('\n'));
}

} // namespace hostcheck
