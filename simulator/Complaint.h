#pragma once

#include <QString>

enum ExitStatus { Done = 0, Failed = 1, NotUnderstood = 2 };

// Prints the message on standard error with the program's name in front. Returns the status.
ExitStatus complain(const QString &message, ExitStatus status);
