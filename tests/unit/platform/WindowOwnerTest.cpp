#include "platform/WindowOwner.h"
#include "platform/ApplicationNames.h"

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

using namespace lumacap;
using namespace Qt::StringLiterals;

namespace {

/// One desktop entry, known by one identifier.
class OneEntry final : public ApplicationNames {
public:
    explicit OneEntry(QString identifier)
        : m_identifier(std::move(identifier))
    {
    }

    std::optional<QString> nameOf(const QStringList &identifiers) const override
    {
        return identifiers.contains(m_identifier) ? std::optional(u"Text Editor"_s) : std::nullopt;
    }

private:
    QString m_identifier;
};

} // namespace

TEST(WindowOwnerTest, isNamedAsItsDesktopEntryByAnyIdentifier)
{
    const WindowOwner owner{u"org.example.editor"_s, u"Editor"_s, u"editor"_s, {}};
    for (const QString &identifier : {owner.applicationId, owner.className, owner.classInstance})
        EXPECT_EQ(ownerName(owner, OneEntry(identifier)), u"Text Editor"_s);
}

TEST(WindowOwnerTest, withoutAnEntryIsNamedByItsClassThenByItsApplicationId)
{
    const OneEntry other(u"other"_s);
    EXPECT_EQ(ownerName({u"org.example.editor"_s, u"Editor"_s, u"editor"_s, {}}, other),
              u"Editor"_s);
    EXPECT_EQ(ownerName({u"org.example.editor"_s, {}, u"editor"_s, {}}, other),
              u"org.example.editor"_s);
}

TEST(WindowOwnerTest, thatTellsNothingElseIsNamedAsItsProcess)
{
    QFile name(u"/proc/self/comm"_s);
    ASSERT_TRUE(name.open(QIODevice::ReadOnly));
    const WindowOwner owner{{}, {}, {}, QCoreApplication::applicationPid()};
    EXPECT_EQ(ownerName(owner, OneEntry(u"other"_s)), QString::fromUtf8(name.readAll().trimmed()));
}

TEST(WindowOwnerTest, hasNoNameWhereNothingTells)
{
    EXPECT_EQ(ownerName({}, OneEntry(QString())), QString());
    EXPECT_EQ(ownerName({{}, {}, {}, 0}, OneEntry(u"other"_s)), QString());
}
