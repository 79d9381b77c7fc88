#pragma once

#include <mutex>
#include <set>

class ConnectionSocket;

/// The open connections of a server, so that a stop can end their reads. A connection belongs to it from its
/// construction until its close. Every member can be called on any thread.
class Connections
{
public:
    /// After endReads, the connection's reads end at once.
    void add(ConnectionSocket* connection);
    /// Runs @p close while no other thread can use the connection's socket.
    template <class Close> void remove(ConnectionSocket* connection, const Close& close)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        open_.erase(connection);
        close();
    }
    /// Ends the current and all future reads of all connections. Replies can still be written.
    void endReads();

private:
    std::mutex mutex_;
    std::set<ConnectionSocket*> open_;
    bool ended_ = false;
};
