#pragma once

#include "ChildProcess.h"

#include <QTemporaryDir>

namespace gallery {

// Makes sure that there is a session bus: uses the one of the session, or starts one for this program alone
// that ends with this object. To be made before the application object, because parts of Qt ask for the bus
// on start.
class PrivateBus
{
public:
    PrivateBus();

    // Empty when there is a bus to use.
    QString errorText() const { return m_errorText; }

private:
    QString startedBusAddress();

    QTemporaryDir m_folder;
    ChildProcess m_daemon;
    QString m_errorText;
};

} // namespace gallery
