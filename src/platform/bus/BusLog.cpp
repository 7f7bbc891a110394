#include "platform/bus/BusLog.h"

Q_LOGGING_CATEGORY(busLog, "toskorn.bus")
