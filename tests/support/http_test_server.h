#pragma once

#include <QtCore/QObject>

namespace TestSupport {

// A loopback HTTP server for the network tests (to be written).
class HttpTestServer : public QObject
{
    Q_OBJECT
};

} // namespace TestSupport
