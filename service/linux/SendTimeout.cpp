#include "service/ConnectionSocket.h"

void ConnectionSocket::configureSendTimeout()
{
    setSendTimeout(kSendTimeoutMs);
}

// The send timeout has already expired in the call that sent nothing.
bool ConnectionSocket::waitToSend()
{
    return false;
}
