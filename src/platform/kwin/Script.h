#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDeadlineTimer>
#include <QObject>
#include <QString>

#include <optional>

namespace lumacap::kwin {

/// A script of ours that KWin runs, which is how it tells what no protocol does.
class Script final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.lumacap.Script")

public:
    /// `source` calls `tell(text)`. `name` is its own among all scripts of KWin's, and the same in
    /// every process of ours, so that it takes the place of one that was left there.
    Script(QDBusConnection bus, QString name, QByteArray source);
    Q_DISABLE_COPY_MOVE(Script)
    /// Takes the script out of KWin.
    ~Script() override;

    /// Takes a script of that name out of KWin, if there is one: a process that was killed leaves
    /// its own there.
    static void unload(const QDBusConnection &bus, const QString &name);

    /// Runs the script, once. What it tells first; nothing where it does not until `deadline`.
    QCoro::Task<std::optional<QString>> run(QDeadlineTimer deadline);

Q_SIGNALS:
    /// Each time, the first one too.
    void told(const QString &text);

public Q_SLOTS:
    /// For KWin to call.
    Q_SCRIPTABLE void tell(const QString &text);

private:
    QByteArray wholeSource() const;
    QCoro::Task<bool> load(QString path, QDeadlineTimer deadline);
    QCoro::Task<bool> start(int number, QDeadlineTimer deadline);

    QDBusConnection m_bus;
    QString m_name;
    QByteArray m_source;
    QString m_path; // of this object, which nobody guesses
    QString m_kwin; // its unique name on the bus; empty until it has loaded the script
    std::optional<QString> m_first;
    bool m_isKnownToKWin = false;
};

} // namespace lumacap::kwin
