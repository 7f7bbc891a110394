#pragma once

#include <QString>

enum ExitStatus { Done = 0, Failed = 1, NotUnderstood = 2 };

// Says the message on standard error under the program's name. Gives the status back, for a return.
ExitStatus complain(const QString &message, ExitStatus status);
