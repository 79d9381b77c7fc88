#include "service/RejectionPause.h"

void pauseBeforeRejection(THRIFT_SOCKET) {}
