#pragma once

#include "tests/support/Recorder.h"

#include <QtCore/QObject>
#include <QtGui/QWindow>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// What a fake method does with its arguments; its result is turned into the method's return type.
using FakeBody = std::function<QVariant(const QVariantList& arguments)>;

/// One member of a fake object. Methods record each call before their body runs.
struct FakeMember
{
    QByteArray name; ///< signature of a method ("disks(int,bool)"), or name of a property
    QByteArray type; ///< return type of a method, empty for none; type of a property
    bool isProperty = false;
    FakeBody body;  ///< method: what it answers, null the type's default; property: what it reads as
    QVariant value; ///< property: its value
    bool isSignal = false;
};

/// The description of a fake host object, from which members can be taken away or exchanged before it is
/// built.
class FakeSpec
{
public:
    FakeSpec& method(const QByteArray& signature, const QByteArray& returnType = {}, FakeBody body = {});
    /// A signal; the only kind of member of its object.
    FakeSpec& signal(const QByteArray& signature);
    FakeSpec& property(const QByteArray& name, const QByteArray& type, const QVariant& value);
    /// Calls @p body, with no arguments, at each read of that property; its result is what is read. The reads
    /// of other properties leave no trace.
    FakeSpec& reading(const QByteArray& property, FakeBody body);
    /// Takes away every member of that bare name.
    FakeSpec& remove(const QByteArray& bareName);
    /// Gives the methods of that bare name another body.
    FakeSpec& answer(const QByteArray& bareName, FakeBody body);
    FakeSpec& answer(const QByteArray& bareName, const QVariant& value);

    const std::vector<FakeMember>& members() const { return members_; }

private:
    std::vector<FakeMember> members_;
};

namespace fake {

/// The meta-object of a fake and what stands behind it; shared by the two classes below.
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
    /// The property as it stands now.
    QVariant value(const QByteArray& property) const { return body_->value(property); }
    void setValue(const QByteArray& property, const QVariant& value) { body_->setValue(property, value); }
    /// Emits the first signal of the description, without arguments.
    void emitSignal() { QMetaObject::activate(this, body_->metaObject(), 0, nullptr); }

private:
    std::unique_ptr<fake::Body> body_;
};

using FakeObject = FakeOf<QObject>;
using FakeWindow = FakeOf<QWindow>;
