// A desktop portal that answers as it is told, for what a real one does not do on demand:
//
//   stand_in_portal METHOD=MANNER,MANNER… [uri=URI] [picture=FILE to=FOLDER]
//
// METHOD is the name of a portal's method, whose calls are answered in these manners in turn, the
// last one again and again. A granted Screenshot copies FILE to a new file in FOLDER and names
// that, or names URI. It says on standard output, a line each: "ready", and the name of each call.

#include "StandInPortal.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>

#include <array>
#include <cstdio>
#include <cstdlib>
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
