#pragma once

#include <QtCore/QProcess>
#include <QtCore/QThread>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVirtualObject>

#include <mutex>
#include <vector>

/// Roles and states of AT-SPI 2 that the tests read; the numbers are those of its protocol.
namespace atspi {

enum Role {
    kAlert = 2,
    kCheckBox = 7,
    kLabel = 29,
    kList = 31,
    kListItem = 32,
    kPageTab = 37,
    kPanel = 39,
    kPushButton = 43
};
enum State { kFocusable = 11, kFocused = 12, kSelectable = 22, kSelected = 23, kVisible = 30 };

} // namespace atspi

/// The registry of AT-SPI, where a program announces its window. It answers on a thread of its own, because
/// programs wait for its answers while they start.
class AssistiveRegistry : public QDBusVirtualObject
{
public:
    AssistiveRegistry();
    ~AssistiveRegistry() override;

    /// Registers the names and objects of AT-SPI on a bus with that address. Returns whether this succeeded.
    bool offer(QDBusConnection bus, const QString& address);
    /// The connection name of the program that has announced itself; empty before.
    QString program() const;

private:
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    QThread thread_;
    QString address_;
    mutable std::mutex mutex_;
    QString program_;
};

/// A private session bus with a registry of AT-SPI, and the screen reader that asks the program about its
/// window. The machine's own session bus and registry are neither used nor needed. All functions run on the
/// application thread.
class AssistiveBus
{
public:
    AssistiveBus();
    ~AssistiveBus();

    /// Why the bus does not work; empty if it works.
    QString error() const { return error_; }
    /// Offers the registry, as a desktop does when its user turns the screen reader on. Call it when the
    /// program is ready: with a registry that is there first, Qt 5.15 can announce the window before it has
    /// connected to the bus, and then never again. Returns whether this succeeded.
    bool turnOn();
    /// For DBUS_SESSION_BUS_ADDRESS of the program under test.
    QString address() const { return address_; }
    /// Whether a program has announced itself.
    bool hasProgram() const { return !registry_.program().isEmpty(); }

    /// An item of the program's window.
    struct Item
    {
        QString path;
        uint role = 0;
        QString name;
        quint64 states = 0;
        bool has(atspi::State state) const { return (states >> static_cast<unsigned>(state) & 1) != 0; }
    };
    /// All visible items below an item, parents first. An empty path is the program itself.
    std::vector<Item> visibleBelow(const QString& path = {});
    /// The visible items of a role.
    std::vector<Item> all(atspi::Role role);
    /// The first visible item of that role and name; an empty path if it is missing.
    Item find(atspi::Role role, const QString& name);
    QString description(const Item& item);
    /// Presses a button or a tab, as a screen reader's user does.
    void press(const Item& item);
    /// Moves the keyboard's focus to an item. Returns whether the program agreed.
    bool grabFocus(const Item& item);
    /// Position and size on the screen, in pixels; invalid if the item has disappeared.
    QRect placeOf(const Item& item);

private:
    QDBusConnection bus() const { return QDBusConnection(name_); }
    /// The reply's arguments; empty after an error: an item can disappear while it is read.
    QVariantList ask(const QString& path, const QString& interface, const QString& method,
                     const QVariantList& arguments = {});
    QString property(const QString& path, const QString& name);
    QStringList children(const QString& path);
    quint64 states(const QString& path);

    QProcess process_;
    QString name_;
    QString address_;
    QString error_;
    AssistiveRegistry registry_;
};
