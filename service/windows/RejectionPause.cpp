#include "service/RejectionPause.h"

void pauseAfterRejection(THRIFT_SOCKET) {}
