// A desktop portal that answers as it is told, for what a real one does not do on demand:
//
//   stand_in_portal METHOD=MANNER,MANNER… [uri=URI] [picture=FILE to=FOLDER]
//
// METHOD is the name of a portal's method, whose calls are answered in these manners in turn, the
// last one again and again. A granted Screenshot copies FILE to a new file in FOLDER and names
// that, or names URI. It says on standard output, a line each: "ready", and the name of each call.

#include "StandInPortal.h"
#include "platform/portal/shortcuts/BoundShortcut.h"
#include "platform/portal/shortcuts/ShortcutSession.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QFile>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace lumacap::portal;

namespace {

constexpr std::array manners{
    std::pair{"grants"_L1, Manner::Grants},
    std::pair{"cancels"_L1, Manner::Cancels},
    std::pair{"refuses"_L1, Manner::Refuses},
    std::pair{"keeps-silent"_L1, Manner::KeepsSilent},
    std::pair{"ignores"_L1, Manner::IgnoresTheCall},
    std::pair{"fails"_L1, Manner::FailsTheCall},
    std::pair{"names-nonsense"_L1, Manner::NamesNonsense},
    std::pair{"answers-nonsense"_L1, Manner::AnswersNonsense},
    std::pair{"answers-elsewhere"_L1, Manner::AnswersElsewhere},
    std::pair{"answers-early"_L1, Manner::AnswersEarly},
    std::pair{"answers-twice"_L1, Manner::AnswersTwice},
    std::pair{"vanishes"_L1, Manner::Vanishes},
};

[[noreturn]] void fail(const char *reason)
{
    std::fprintf(stderr, "stand_in_portal: %s\n", reason);
    std::exit(EXIT_FAILURE);
}

void say(const QString &word)
{
    std::puts(qUtf8Printable(word));
    std::fflush(stdout);
}

QList<Manner> mannersOf(const QString &names)
{
    QList<Manner> list;
    for (const QString &name : names.split(u',')) {
        const auto *const found =
            std::find_if(manners.begin(), manners.end(),
                         [&name](const auto &manner) { return manner.first == name; });
        if (found == manners.end())
            fail("no such manner");
        list.append(found->second);
    }
    return list;
}

QString newPicture(const QString &picture, const QString &folder)
{
    static int number = 0;
    const QString file = u"%1/Capture d’écran %2.png"_s.arg(folder).arg(++number);
    if (!QFile::copy(picture, file))
        fail("the picture can't be copied");
    return QString::fromUtf8(QUrl::fromLocalFile(file).toEncoded());
}

QVariantMap optionsOf(const QDBusMessage &call)
{
    return qdbus_cast<QVariantMap>(call.arguments().constLast());
}

/// The shortcuts of one client, as far as a stand-in keeps them.
class Shortcuts : public QObject {
    Q_OBJECT

public:
    explicit Shortcuts(StandInPortal &portal)
        : m_portal(portal)
    {
        registerBoundShortcuts();
        portal.setVersion(shortcutsInterface, 1);
        portal.setResults(u"CreateSession"_s, [this](const QDBusMessage &call) {
            m_session = portalPath
                + u"/session/%1/%2"_s.arg(call.service().mid(1).replace(u'.', u'_'),
                                          optionsOf(call)[u"session_handle_token"_s].toString());
            return QVariantMap{{u"session_handle"_s, m_session}};
        });
        portal.setResults(u"BindShortcuts"_s, [](const QDBusMessage &call) {
            const auto asked = qdbus_cast<QList<BoundShortcut>>(call.arguments().at(1));
            for (const BoundShortcut &shortcut : asked)
                say(shortcut.facts[u"preferred_trigger"_s].toString());
            return QVariantMap{{u"shortcuts"_s, QVariant::fromValue(asked)}};
        });
        QDBusConnection::sessionBus().connect({}, {}, u"org.example.StandIn"_s, u"Press"_s, this,
                                              SLOT(press(QString)));
    }

private Q_SLOTS:
    void press(const QString &id)
    {
        m_portal.tell(
            portalPath, shortcutsInterface, u"Activated"_s,
            {QVariant::fromValue(QDBusObjectPath(m_session)), id, qulonglong{1}, QVariantMap()});
    }

private:
    StandInPortal &m_portal;
    QString m_session;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    StandInPortal portal(QDBusConnection::sessionBus());
    QHash<QString, QString> options;
    for (const QString &argument : QCoreApplication::arguments().mid(1)) {
        const QString name = argument.section(u'=', 0, 0);
        const QString value = argument.section(u'=', 1);
        if (name.front().isUpper())
            portal.setManners(name, mannersOf(value));
        else
            options[name] = value;
    }
    std::optional<Shortcuts> shortcuts;
    if (options.contains(u"shortcuts"_s))
        shortcuts.emplace(portal);
    portal.setVersion(u"org.freedesktop.portal.Screenshot"_s, 2);
    portal.setResults(u"Screenshot"_s, [&options](const QDBusMessage & /*call*/) {
        const QString uri = options.contains(u"uri"_s)
            ? options[u"uri"_s]
            : newPicture(options[u"picture"_s], options[u"to"_s]);
        return QVariantMap{{u"uri"_s, uri}};
    });
    QObject::connect(&portal, &StandInPortal::called, &portal, &say);
    portal.appear();
    say(u"ready"_s);
    return QCoreApplication::exec();
}

#include "StandInPortalMain.moc"
