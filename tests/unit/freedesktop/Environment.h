#pragma once

#include <QByteArray>

namespace lumacap::tests {

/// An environment variable that has another value for the length of a test.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char *name, const QByteArray &value)
        : m_name{name}
        , m_wasSet{qEnvironmentVariableIsSet(name)}
        , m_previous{qgetenv(name)}
    {
        qputenv(name, value);
    }
    Q_DISABLE_COPY_MOVE(EnvironmentVariable)
    ~EnvironmentVariable() { m_wasSet ? qputenv(m_name, m_previous) : qunsetenv(m_name); }

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_previous;
};

} // namespace lumacap::tests
