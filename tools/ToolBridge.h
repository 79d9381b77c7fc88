#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

class HostPages;
class Inventory;

/// Signals that the tools and the gate send to the host. Each is emitted on the calling thread.
class ToolEvents
{
public:
    virtual ~ToolEvents() = default;

    /// Opens the clone guide with a result map.
    virtual void emitCloneResult(const QVariant& result) const = 0;
    /// Opens the conversion guide with a task map.
    virtual void emitConvertResult(const QVariant& task) const = 0;
    /// The gate has admitted the call @p toolCalls.
    virtual void emitAboutToCall(const QString& toolCalls) const = 0;
    /// A call has ended with @p result; @p queued is true if the host accepted the order.
    virtual void emitAfterCall(const QString& result, bool queued) const = 0;
};

/// The parts of the component that the tools use. They are not owned and must outlive the last tool call.
struct ToolBridge
{
    const Inventory& inventory;
    const HostPages& pages;
    const ToolEvents& events;
};

/// The pages of @p bridge; null for a null bridge.
inline const HostPages* pagesOf(const ToolBridge* bridge)
{
    return bridge == nullptr ? nullptr : &bridge->pages;
}
