#include "tests/support/FakeObject.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaType>
#include <QtCore/private/qmetaobjectbuilder_p.h>

#include <algorithm>
#include <cstdlib>

namespace {

QByteArray bareName(const QByteArray& signature)
{
    const int parenthesis = signature.indexOf('(');
    return parenthesis < 0 ? signature : signature.left(parenthesis);
}

// Copies a value to the caller's storage, converted to the declared type of the member.
void store(void* place, const QByteArray& type, QVariant value)
{
    const int id = QMetaType::type(type.constData());
    if (place == nullptr || type.isEmpty())
        return;
    if (id == QMetaType::QVariant) {
        *static_cast<QVariant*>(place) = value;
        return;
    }
    if (!value.isValid() || !value.convert(id))
        value = QVariant(id, nullptr);
    QMetaType::destruct(id, place);
    QMetaType::construct(id, place, value.constData());
}

QVariant load(int type, const void* place)
{
    return type == QMetaType::QVariant ? *static_cast<const QVariant*>(place) : QVariant(type, place);
}

} // namespace

FakeSpec& FakeSpec::method(const QByteArray& signature, const QByteArray& returnType, FakeBody body)
{
    members_.push_back({signature, returnType, false, std::move(body), {}, false});
    return *this;
}

FakeSpec& FakeSpec::property(const QByteArray& name, const QByteArray& type, const QVariant& value)
{
    members_.push_back({name, type, true, {}, value, false});
    return *this;
}

FakeSpec& FakeSpec::signal(const QByteArray& signature)
{
    members_.push_back({signature, {}, false, {}, {}, true});
    return *this;
}

FakeSpec& FakeSpec::reading(const QByteArray& property, FakeBody body)
{
    for (FakeMember& member : members_) {
        if (member.isProperty && member.name == property)
            member.body = body;
    }
    return *this;
}

FakeSpec& FakeSpec::remove(const QByteArray& name)
{
    members_.erase(std::remove_if(members_.begin(), members_.end(),
                                  [&](const FakeMember& member) { return bareName(member.name) == name; }),
                   members_.end());
    return *this;
}

FakeSpec& FakeSpec::answer(const QByteArray& name, FakeBody body)
{
    for (FakeMember& member : members_) {
        if (!member.isProperty && bareName(member.name) == name)
            member.body = body;
    }
    return *this;
}

FakeSpec& FakeSpec::answer(const QByteArray& name, const QVariant& value)
{
    return answer(name, [value](const QVariantList&) { return value; });
}

namespace fake {

Body::Body(const FakeSpec& spec, const QMetaObject* super, Recorder* recorder, QObject* self, QString name)
    : recorder_(recorder), self_(self), name_(std::move(name))
{
    QMetaObjectBuilder builder;
    builder.setClassName("FakeObject");
    builder.setSuperClass(super);
    for (const FakeMember& member : spec.members()) {
        if (member.isProperty) {
            QMetaPropertyBuilder property = builder.addProperty(member.name, member.type);
            property.setWritable(true);
            property.setReadable(true);
            properties_.push_back(member);
        } else if (member.isSignal) {
            builder.addSignal(QMetaObject::normalizedSignature(member.name.constData()));
            methods_.push_back(member);
        } else {
            builder.addMethod(QMetaObject::normalizedSignature(member.name.constData()),
                              member.type.isEmpty() ? QByteArray("void") : member.type);
            methods_.push_back(member);
        }
    }
    meta_ = builder.toMetaObject();
}

Body::~Body()
{
    std::free(meta_);
}

int Body::metacall(QMetaObject::Call call, int id, void** arguments)
{
    const auto index = static_cast<std::size_t>(id);
    if (call == QMetaObject::InvokeMetaMethod) {
        if (index < methods_.size())
            invoke(methods_[index], id, arguments);
        return id - static_cast<int>(methods_.size());
    }
    if (call == QMetaObject::RegisterMethodArgumentMetaType) {
        *static_cast<int*>(arguments[0]) = -1;
        return id - static_cast<int>(methods_.size());
    }
    if (call == QMetaObject::ReadProperty && index < properties_.size()) {
        store(arguments[0], properties_[index].type, valueRead(properties_[index]));
    } else if (call == QMetaObject::WriteProperty && index < properties_.size()) {
        const std::lock_guard<std::mutex> lock(mutex_);
        properties_[index].value = load(QMetaType::type(properties_[index].type.constData()), arguments[0]);
        if (recorder_ != nullptr)
            recorder_->add({name_,
                            QString::fromLatin1(properties_[index].name),
                            {properties_[index].value},
                            QThread::currentThread(),
                            false});
    }
    return id - static_cast<int>(properties_.size());
}

void Body::invoke(const FakeMember& member, int index, void** arguments)
{
    const QMetaMethod method = meta_->method(meta_->methodOffset() + index);
    QVariantList values;
    for (int i = 0; i < method.parameterCount(); ++i)
        values.append(load(method.parameterType(i), arguments[i + 1]));
    if (recorder_ != nullptr)
        recorder_->add({name_, QString::fromLatin1(bareName(member.name)), values, QThread::currentThread(),
                        arguments[0] != nullptr});
    const QVariant result = member.body ? member.body(values) : QVariant();
    store(arguments[0], member.type, result);
    Q_UNUSED(self_)
}

QVariant Body::valueRead(const FakeMember& property) const
{
    if (property.body)
        return property.body({});
    const std::lock_guard<std::mutex> lock(mutex_);
    return property.value;
}

QVariant Body::value(const QByteArray& property) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const FakeMember& member : properties_) {
        if (member.name == property)
            return member.value;
    }
    return QVariant();
}

void Body::setValue(const QByteArray& property, const QVariant& value)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    for (FakeMember& member : properties_) {
        if (member.name == property)
            member.value = value;
    }
}

} // namespace fake
