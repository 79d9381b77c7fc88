#include "service/Connections.h"

#include "service/ConnectionSocket.h"

void Connections::add(ConnectionSocket* connection)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    open_.insert(connection);
    if (ended_)
        connection->endReads();
}

void Connections::endReads()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    ended_ = true;
    for (ConnectionSocket* connection : open_)
        connection->endReads();
}
