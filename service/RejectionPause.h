#pragma once

#include <thrift/transport/PlatformSocket.h>

/// Limits what a loop of rejected connections costs: without a pause it keeps two threads awake, and the
/// scheduler then moves the threads of the served clients between the cores. Pauses 0.2 milliseconds, unless
/// another client waits at @p listening, so that a queue delays no admitted client. Call it before closing
/// the rejected connection: a loop connects again after that. Returns at once on Windows, whose timer can
/// turn a pause into 15 milliseconds. Server's thread; never throws.
void pauseBeforeRejection(THRIFT_SOCKET listening);
