// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/AttributeCriterion.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QTest>

#include <vector>

using Corvane::SCLElement;
using namespace Corvane::Internal;

namespace
{

using Attributes = QMap<QString, QString>;
using Terms = std::vector<AttributeCriterion::Term>;

Terms TermsOf(const AttributeCriterion& criterion)
{
    return Terms(criterion.Terms().begin(), criterion.Terms().end());
}

} // namespace

class AttributeCriterionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyCriterionHasNoTerms();
    void termsStandInTheOrderOfTheirNames();
    void listedTermsStandAsGiven();
    void onePairIsOneTerm();
    void matchesTestsAllTerms();
    void anUnknownNameHasNoIdAndIsNotPooled();
    void theEmptyNameHasNoIdEvenWhenPooled();
    void theNamesOfTagsDoNotCount();
};

void AttributeCriterionTest::anEmptyCriterionHasNoTerms()
{
    const SCLNamePool pool;
    QVERIFY(AttributeCriterion(Attributes()).Terms().empty());
}

void AttributeCriterionTest::termsStandInTheOrderOfTheirNames()
{
    SCLNamePool pool;
    pool.AddAttToNamePool("prefix");
    pool.AddAttToNamePool("inst");
    pool.AddAttToNamePool("lnClass");
    const Attributes attributes{{"prefix", ""}, {"lnClass", "XCBR"}, {"inst", "1"}};
    QVERIFY(TermsOf(AttributeCriterion(attributes)) == Terms({{2, "1"}, {3, "XCBR"}, {1, ""}}));
}

void AttributeCriterionTest::listedTermsStandAsGiven()
{
    SCLNamePool pool;
    pool.AddAttToNamePool("inst");
    pool.AddAttToNamePool("prefix");
    const AttributeCriterion criterion{{"prefix", "Q"}, {"inst", "1"}, {"prefix", ""}};
    QVERIFY(TermsOf(criterion) == Terms({{2, "Q"}, {1, "1"}, {2, ""}}));
}

void AttributeCriterionTest::matchesTestsAllTerms()
{
    const SCLNamePool pool;
    SCLElement ln("LN", nullptr, nullptr);
    ln.SetAttribute("lnClass", "XCBR", false);
    ln.SetAttribute("inst", "1", false);
    QVERIFY(AttributeCriterion(Attributes()).Matches(&ln));
    QVERIFY(AttributeCriterion("inst", "1").Matches(&ln));
    QVERIFY(!AttributeCriterion("inst", "2").Matches(&ln));
    QVERIFY(AttributeCriterion("prefix", "").Matches(&ln));
    QVERIFY(!AttributeCriterion("prefix", "Q").Matches(&ln));
    const AttributeCriterion both{{"lnClass", "XCBR"}, {"inst", "1"}};
    QVERIFY(both.Matches(&ln));
    const AttributeCriterion oneDiffers{{"lnClass", "XCBR"}, {"inst", ""}};
    QVERIFY(!oneDiffers.Matches(&ln));
}

void AttributeCriterionTest::onePairIsOneTerm()
{
    SCLNamePool pool;
    pool.AddAttToNamePool("inst");
    const AttributeCriterion criterion("inst", "1");
    QVERIFY(TermsOf(criterion) == Terms({{1, "1"}}));
}

void AttributeCriterionTest::anUnknownNameHasNoIdAndIsNotPooled()
{
    const SCLNamePool pool;
    const AttributeCriterion criterion("inst", "1");
    QVERIFY(TermsOf(criterion) == Terms({{0, "1"}}));
    QCOMPARE(int(pool.GetIdFromAtt("inst")), 0);
}

void AttributeCriterionTest::theEmptyNameHasNoIdEvenWhenPooled()
{
    SCLNamePool pool;
    pool.AddAttToNamePool("");
    QVERIFY(TermsOf(AttributeCriterion("", "1")) == Terms({{0, "1"}}));
    QVERIFY(TermsOf(AttributeCriterion(Attributes{{QString(), "1"}})) == Terms({{0, "1"}}));
}

void AttributeCriterionTest::theNamesOfTagsDoNotCount()
{
    SCLNamePool pool;
    pool.AddTagToNamePool("inst");
    QVERIFY(TermsOf(AttributeCriterion("inst", "1")) == Terms({{0, "1"}}));
}

QTEST_APPLESS_MAIN(AttributeCriterionTest)
#include "AttributeCriterionTest.moc"
