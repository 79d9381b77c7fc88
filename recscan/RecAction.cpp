// The way back of a recommendation: the user's answer, and the action that it asks for.
#include "plugin/AIBridge.h"

void AIBridge::doRecOperation(QVariant) {}
