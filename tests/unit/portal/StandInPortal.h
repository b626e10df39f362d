#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace lumacap::portal {

/// How a stand-in answers the requests of one method.
enum class Manner {
    Grants,
    Cancels,
    Refuses,
    KeepsSilent, ///< Names the request and never answers.
    IgnoresTheCall, ///< Does not even name it.
    FailsTheCall,
    NamesNonsense, ///< The call's answer is no path.
    AnswersNonsense, ///< The answer is of other types.
    AnswersElsewhere, ///< At a path of its own, which it tells.
    AnswersEarly, ///< The same, before it tells.
    AnswersTwice, ///< Grants, then refuses.
    Vanishes, ///< Names the request and leaves the bus, where nobody else has its connection.
};

/// A portal on a connection of its own, which has the interfaces and manners it is told.
class StandInPortal : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// What a granted request of a method comes with; may write files meanwhile.
    using Results = std::function<QVariantMap(const QDBusMessage &call)>;

    explicit StandInPortal(QDBusConnection connection);
    Q_DISABLE_COPY_MOVE(StandInPortal)
    ~StandInPortal() override;

    QString uniqueName() const { return m_connection.baseService(); }
    void appear();
    void vanish();
    /// Leaves the bus, once the loop turns, where nobody else has its connection.
    void leaveSoon();
    void setVersion(const QString &interface, uint version) { m_versions[interface] = version; }
    void setManner(const QString &method, Manner manner) { m_manners[method] = {manner}; }
    /// One for each call in turn; the last one for all that follow.
    void setManners(const QString &method, const QList<Manner> &manners)
    {
        m_manners[method] = manners;
    }
    void setResults(const QString &method, Results results) { m_results[method] = results; }

    /// The members called, oldest first, without the ones that read properties.
    QStringList calls() const;
    /// The last call of `member`.
    std::optional<QDBusMessage> lastCall(const QString &member) const;
    /// Sends a signal of `interface` to everybody.
    void tell(const QString &path, const QString &interface, const QString &signal,
              const QVariantList &arguments);

Q_SIGNALS:
    void called(const QString &member);

public:
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &path) const override;

private:
    Manner nextManner(const QString &method);
    bool tellVersion(const QDBusMessage &message);
    void answerRequest(const QDBusMessage &call);
    void respond(const QDBusMessage &call, const QString &path, uint verdict);

    QDBusConnection m_connection;
    QHash<QString, uint> m_versions;
    QHash<QString, QList<Manner>> m_manners;
    QHash<QString, Results> m_results;
    QList<QDBusMessage> m_calls;
};

} // namespace lumacap::portal
