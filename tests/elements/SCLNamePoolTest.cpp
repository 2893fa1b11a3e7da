// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <limits>
#include <memory>

using Corvane::Internal::SCLNamePool;

namespace
{

using Add = unsigned short (SCLNamePool::*)(const QString&);
using Intern = unsigned short (SCLNamePool::*)(QStringView);
using ToId = unsigned short (SCLNamePool::*)(const QString&) const;
using ToName = QString (SCLNamePool::*)(unsigned short) const;

// Tags and attribute names follow the same rules, each on a side of its own.
struct Side {
    Add add;
    Intern intern;
    ToId toId;
    ToName toName;
};

const Side g_sides[] = {{&SCLNamePool::AddTagToNamePool, &SCLNamePool::InternTag,
                         &SCLNamePool::GetIdFromTag, &SCLNamePool::GetTagFromId},
                        {&SCLNamePool::AddAttToNamePool, &SCLNamePool::InternAtt,
                         &SCLNamePool::GetIdFromAtt, &SCLNamePool::GetAttFromId}};

constexpr int g_capacity = std::numeric_limits<unsigned short>::max();

void Fill(SCLNamePool& pool, const Side& side, int count)
{
    for (int i = 1; i <= count; ++i)
        (pool.*side.add)(QStringLiteral("n%1").arg(i));
}

} // namespace

class SCLNamePoolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Must stand first: no later function can see a process without a pool.
    void thereIsNoInstanceBeforeAPoolIsMade();
    void aNewPoolIsTheInstance();
    void destroyingAReplacedPoolKeepsTheInstance();
    void theInvalidIdIsZero();

    void idsRiseByOneFromOne_data();
    void idsRiseByOneFromOne();
    void addingANameAgainGivesItsIdAndNoNewOne_data();
    void addingANameAgainGivesItsIdAndNoNewOne();
    void namesCompareExactly_data();
    void namesCompareExactly();
    void idsGoBackToTheirNames_data();
    void idsGoBackToTheirNames();
    void unknownIdsGiveANullName_data();
    void unknownIdsGiveANullName();
    void lookingUpNeverAdds_data();
    void lookingUpNeverAdds();
    void theEmptyTextIsANameLikeAnyOther_data();
    void theEmptyTextIsANameLikeAnyOther();
    void aViewIsPooledLikeAText_data();
    void aViewIsPooledLikeAText();
    void aPooledViewOutlivesItsText_data();
    void aPooledViewOutlivesItsText();
    void longAndForeignNamesArePooledWhole_data();
    void longAndForeignNamesArePooledWhole();
    void everyNameKeepsItsIdWhileThousandsFollow_data();
    void everyNameKeepsItsIdWhileThousandsFollow();
    void aFullPoolRefusesOnlyNewNames_data();
    void aFullPoolRefusesOnlyNewNames();

    void tagsAndAttributesArePooledApart();
    void theLastTagIdRisesWithNewTagsAlone();
    void twoPoolsShareNothing();

private:
    void AddSides();
    const Side& TheSide() const;
};

void SCLNamePoolTest::AddSides()
{
    QTest::addColumn<int>("side");
    QTest::newRow("tags") << 0;
    QTest::newRow("attributes") << 1;
}

const Side& SCLNamePoolTest::TheSide() const
{
    QFETCH(int, side);
    return g_sides[side];
}

void SCLNamePoolTest::thereIsNoInstanceBeforeAPoolIsMade()
{
    QVERIFY(SCLNamePool::Instance() == nullptr);
    QVERIFY(SCLNamePool::Instance() == nullptr);
}

void SCLNamePoolTest::aNewPoolIsTheInstance()
{
    const SCLNamePool first;
    QCOMPARE(SCLNamePool::Instance(), &first);
    const SCLNamePool second;
    QCOMPARE(SCLNamePool::Instance(), &second);
}

void SCLNamePoolTest::destroyingAReplacedPoolKeepsTheInstance()
{
    auto first = std::make_unique<SCLNamePool>();
    const SCLNamePool second;
    first.reset();
    QCOMPARE(SCLNamePool::Instance(), &second);
}

void SCLNamePoolTest::theInvalidIdIsZero()
{
    const int id = SCLNamePool::m_uInvalidId;
    QCOMPARE(id, 0);
}

void SCLNamePoolTest::idsRiseByOneFromOne_data()
{
    AddSides();
}

void SCLNamePoolTest::idsRiseByOneFromOne()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    QCOMPARE(int((pool.*side.add)("IED")), 1);
    QCOMPARE(int((pool.*side.add)("LN")), 2);
    QCOMPARE(int((pool.*side.add)("DOI")), 3);
}

void SCLNamePoolTest::addingANameAgainGivesItsIdAndNoNewOne_data()
{
    AddSides();
}

void SCLNamePoolTest::addingANameAgainGivesItsIdAndNoNewOne()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    (pool.*side.add)("IED");
    (pool.*side.add)("LN");
    QCOMPARE(int((pool.*side.add)("IED")), 1);
    QCOMPARE(int((pool.*side.add)("LN")), 2);
    QCOMPARE(int((pool.*side.add)("DOI")), 3);
}

void SCLNamePoolTest::namesCompareExactly_data()
{
    AddSides();
}

void SCLNamePoolTest::namesCompareExactly()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    (pool.*side.add)("name");
    QCOMPARE(int((pool.*side.toId)("name")), 1);
    for (const char* other : {"Name", "NAME", "name ", " name", "nam", "names", "scl:name"})
        QCOMPARE(int((pool.*side.toId)(other)), 0);
    // One letter in two codings is two names.
    QCOMPARE(int((pool.*side.add)(QString(QChar(0x00E9)))), 2);
    QCOMPARE(int((pool.*side.toId)(QStringLiteral("e") + QChar(0x0301))), 0);
}

void SCLNamePoolTest::idsGoBackToTheirNames_data()
{
    AddSides();
}

void SCLNamePoolTest::idsGoBackToTheirNames()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    (pool.*side.add)("IED");
    (pool.*side.add)("xsi:schemaLocation");
    QCOMPARE((pool.*side.toName)(1), QString("IED"));
    QCOMPARE((pool.*side.toName)(2), QString("xsi:schemaLocation"));
}

void SCLNamePoolTest::unknownIdsGiveANullName_data()
{
    AddSides();
}

void SCLNamePoolTest::unknownIdsGiveANullName()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    QVERIFY((pool.*side.toName)(0).isNull());
    QVERIFY((pool.*side.toName)(1).isNull());
    (pool.*side.add)("IED");
    QVERIFY((pool.*side.toName)(0).isNull());
    QVERIFY((pool.*side.toName)(2).isNull());
    QVERIFY((pool.*side.toName)(65535).isNull());
}

void SCLNamePoolTest::lookingUpNeverAdds_data()
{
    AddSides();
}

void SCLNamePoolTest::lookingUpNeverAdds()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    QCOMPARE(int((pool.*side.toId)("LN")), 0);
    QCOMPARE(int((pool.*side.toId)(QString())), 0);
    QCOMPARE(int((pool.*side.add)("IED")), 1);
    QCOMPARE(int((pool.*side.toId)("LN")), 0);
    QCOMPARE(int((pool.*side.add)("LN")), 2);
}

void SCLNamePoolTest::theEmptyTextIsANameLikeAnyOther_data()
{
    AddSides();
}

void SCLNamePoolTest::theEmptyTextIsANameLikeAnyOther()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    QCOMPARE(int((pool.*side.toId)("")), 0);
    QCOMPARE(int((pool.*side.add)("")), 1);
    QCOMPARE(int((pool.*side.toId)("")), 1);
    QCOMPARE(int((pool.*side.toId)(QString())), 1);
    QCOMPARE(int((pool.*side.add)(QString())), 1);
    QVERIFY((pool.*side.toName)(1).isEmpty());
    QCOMPARE(int((pool.*side.add)("IED")), 2);
}

void SCLNamePoolTest::aViewIsPooledLikeAText_data()
{
    AddSides();
}

void SCLNamePoolTest::aViewIsPooledLikeAText()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    const QString text = QStringLiteral("<LDevice/>");
    QCOMPARE(int((pool.*side.intern)(QStringView(text).mid(1, 2))), 1);
    QCOMPARE(int((pool.*side.intern)(QStringView(text).mid(1, 7))), 2);
    QCOMPARE(int((pool.*side.intern)(QStringView(text).mid(1, 2))), 1);
    QCOMPARE(int((pool.*side.add)("LDevice")), 2);
    QCOMPARE(int((pool.*side.toId)("LD")), 1);
    QCOMPARE(int((pool.*side.intern)(QStringView())), 3);
    QCOMPARE(int((pool.*side.toId)("")), 3);
}

void SCLNamePoolTest::aPooledViewOutlivesItsText_data()
{
    AddSides();
}

void SCLNamePoolTest::aPooledViewOutlivesItsText()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    QString text = QStringLiteral("LDe") + QStringLiteral("vice");
    (pool.*side.intern)(text);
    text.fill(QLatin1Char('x'));
    QCOMPARE(int((pool.*side.toId)("LDevice")), 1);
    QCOMPARE((pool.*side.toName)(1), QString("LDevice"));
}

void SCLNamePoolTest::longAndForeignNamesArePooledWhole_data()
{
    AddSides();
}

void SCLNamePoolTest::longAndForeignNamesArePooledWhole()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    const QString longName(100000, QLatin1Char('n'));
    QString withNull = QStringLiteral("a b");
    withNull[1] = QChar(0);
    QCOMPARE(int((pool.*side.add)(longName)), 1);
    QCOMPARE(int((pool.*side.add)(longName + QLatin1Char('n'))), 2);
    QCOMPARE(int((pool.*side.add)(withNull)), 3);
    QCOMPARE(int((pool.*side.add)("a")), 4);
    QCOMPARE((pool.*side.toName)(1), longName);
    QCOMPARE((pool.*side.toName)(3), withNull);
}

void SCLNamePoolTest::everyNameKeepsItsIdWhileThousandsFollow_data()
{
    AddSides();
}

void SCLNamePoolTest::everyNameKeepsItsIdWhileThousandsFollow()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    Fill(pool, side, 20000);
    for (int i = 1; i <= 20000; ++i) {
        const QString name = QStringLiteral("n%1").arg(i);
        QCOMPARE(int((pool.*side.toId)(name)), i);
        QCOMPARE((pool.*side.toName)(static_cast<unsigned short>(i)), name);
    }
}

void SCLNamePoolTest::aFullPoolRefusesOnlyNewNames_data()
{
    AddSides();
}

void SCLNamePoolTest::aFullPoolRefusesOnlyNewNames()
{
    SCLNamePool pool;
    const Side& side = TheSide();
    Fill(pool, side, g_capacity - 1);
    QCOMPARE(int((pool.*side.add)("last")), g_capacity);

    for (const char* name : {"one more", "", "one more"}) {
        QCOMPARE(int((pool.*side.add)(name)), 0);
        QCOMPARE(int((pool.*side.intern)(QString(name))), 0);
        QCOMPARE(int((pool.*side.toId)(name)), 0);
    }
    QVERIFY((pool.*side.toName)(0).isNull());
    QCOMPARE(int((pool.*side.add)("last")), g_capacity);
    QCOMPARE(int((pool.*side.intern)(QStringLiteral("n1"))), 1);
    QCOMPARE((pool.*side.toName)(1), QString("n1"));
    QCOMPARE((pool.*side.toName)(65535), QString("last"));
}

void SCLNamePoolTest::tagsAndAttributesArePooledApart()
{
    SCLNamePool pool;
    QCOMPARE(int(pool.AddTagToNamePool("other")), 1);
    QCOMPARE(int(pool.AddTagToNamePool("name")), 2);
    QCOMPARE(int(pool.GetIdFromAtt("name")), 0);
    QVERIFY(pool.GetAttFromId(2).isNull());
    QCOMPARE(int(pool.AddAttToNamePool("name")), 1);
    QCOMPARE(int(pool.GetIdFromTag("name")), 2);
    QCOMPARE(pool.GetTagFromId(1), QString("other"));
    QCOMPARE(pool.GetAttFromId(1), QString("name"));
}

void SCLNamePoolTest::theLastTagIdRisesWithNewTagsAlone()
{
    SCLNamePool pool;
    QCOMPARE(int(pool.GetLastTagId()), 0);
    pool.AddTagToNamePool("IED");
    QCOMPARE(int(pool.GetLastTagId()), 1);
    pool.AddTagToNamePool("IED");
    pool.GetIdFromTag("LN");
    pool.AddAttToNamePool("name");
    QCOMPARE(int(pool.GetLastTagId()), 1);
    pool.InternTag(QStringLiteral("LN"));
    QCOMPARE(int(pool.GetLastTagId()), 2);
    Fill(pool, g_sides[0], g_capacity);
    QCOMPARE(int(pool.GetLastTagId()), g_capacity);
}

void SCLNamePoolTest::twoPoolsShareNothing()
{
    SCLNamePool first;
    first.AddTagToNamePool("IED");
    SCLNamePool second;
    QCOMPARE(int(second.GetIdFromTag("IED")), 0);
    QCOMPARE(int(second.AddTagToNamePool("LN")), 1);
    QCOMPARE(int(first.GetIdFromTag("LN")), 0);
    QCOMPARE(first.GetTagFromId(1), QString("IED"));
}

QTEST_APPLESS_MAIN(SCLNamePoolTest)
#include "SCLNamePoolTest.moc"
