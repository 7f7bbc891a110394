#pragma once

#include <QLoggingCategory>

// Category "toskorn.bus".
Q_DECLARE_LOGGING_CATEGORY(busLog)
