#pragma once

#include "tests/support/Recorder.h"

#include <QtCore/QObject>
#include <QtGui/QWindow>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The body of a fake method. Its result is converted to the return type of the method.
using FakeBody = std::function<QVariant(const QVariantList& arguments)>;

/// One member of a fake object. Methods record each call before their body runs.
struct FakeMember
{
    QByteArray name; ///< signature of a method ("disks(int,bool)"), or name of a property
    QByteArray type; ///< return type of a method, empty for none; type of a property
    bool isProperty = false;
    FakeBody body;  ///< method: its answer, null for the default of the type; property: its reads
    QVariant value; ///< property: its value
    bool isSignal = false;
};

/// The description of a fake host object. Members can be removed or replaced before the object is
/// built.
class FakeSpec
{
public:
    FakeSpec& method(const QByteArray& signature, const QByteArray& returnType = {}, FakeBody body = {});
    /// A signal; the only kind of member of its object.
    FakeSpec& signal(const QByteArray& signature);
    FakeSpec& property(const QByteArray& name, const QByteArray& type, const QVariant& value);
    /// Calls @p body, without arguments, at each read of that property and returns its result. Reads of other
    /// properties are not recorded.
    FakeSpec& reading(const QByteArray& property, FakeBody body);
    /// Removes every member with that name, for methods without the signature.
    FakeSpec& remove(const QByteArray& bareName);
    /// Replaces the body of the methods with that name.
    FakeSpec& answer(const QByteArray& bareName, FakeBody body);
    FakeSpec& answer(const QByteArray& bareName, const QVariant& value);

    const std::vector<FakeMember>& members() const { return members_; }

private:
    std::vector<FakeMember> members_;
};

namespace fake {

/// The meta-object of a fake and the state of its members; shared by the two classes below.
class Body
{
public:
    Body(const FakeSpec& spec, const QMetaObject* super, Recorder* recorder, QObject* self, QString name);
    ~Body();
    const QMetaObject* metaObject() const { return meta_; }
    int metacall(QMetaObject::Call call, int id, void** arguments);
    QVariant value(const QByteArray& property) const;
    void setValue(const QByteArray& property, const QVariant& value);

private:
    void invoke(const FakeMember& member, int index, void** arguments);
    QVariant valueRead(const FakeMember& property) const;

    std::vector<FakeMember> methods_;
    std::vector<FakeMember> properties_;
    mutable std::mutex mutex_;
    QMetaObject* meta_;
    Recorder* recorder_;
    QObject* self_;
    QString name_;
};

} // namespace fake

/// An object whose members exist only in its meta-object, so that any of them can be missing. @p Base is
/// QObject or QWindow.
template <class Base> class FakeOf : public Base
{
public:
    FakeOf(const QString& name, const FakeSpec& spec, Recorder* recorder)
        : body_(std::make_unique<fake::Body>(spec, &Base::staticMetaObject, recorder, this, name))
    {
    }
    const QMetaObject* metaObject() const override
    {
        return body_ ? body_->metaObject() : &Base::staticMetaObject;
    }
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override
    {
        id = Base::qt_metacall(call, id, arguments);
        return id < 0 ? id : body_->metacall(call, id, arguments);
    }
    /// The current value of the property.
    QVariant value(const QByteArray& property) const { return body_->value(property); }
    void setValue(const QByteArray& property, const QVariant& value) { body_->setValue(property, value); }
    /// Emits the first signal of the description, without arguments.
    void emitSignal() { QMetaObject::activate(this, body_->metaObject(), 0, nullptr); }

private:
    std::unique_ptr<fake::Body> body_;
};

using FakeObject = FakeOf<QObject>;
using FakeWindow = FakeOf<QWindow>;
