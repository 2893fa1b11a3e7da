// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"

#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Internal;
using namespace Corvane::Test;

namespace
{

QStringList Visited(const SCLElement* top)
{
    QStringList names;
    PreorderWalk walk(top);
    while (SCLElement* element = walk.Next())
        names.append(element->GetAttribute("n"));
    return names;
}

SCLElement* Add(SCLElement* parent, const char* tag, const char* n)
{
    return parent->CreateChild(tag, {{"n", n}}, -1, false);
}

// The order of the walk as a plain recursion.
void AppendBelow(SCLElement* element, QList<SCLElement*>& order)
{
    const QList<SCLElement*> children = element->GetChildList();
    for (SCLElement* child : children) {
        order.append(child);
        AppendBelow(child, order);
    }
}

} // namespace

class PreorderWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTopIsNotVisited();
    void theEndIsNullAgainAndAgain();
    void eachElementComesBeforeItsChildren();
    void groupsComeInAscendingTagId();
    void emptyGroupsAreSkipped_data();
    void emptyGroupsAreSkipped();
    void theWalkStaysBelowItsTop();
    void valuesMayChangeDuringTheWalk();
    void itAgreesWithAPlainRecursion();
    void aMillionLevels();
};

void PreorderWalkTest::theTopIsNotVisited()
{
    const SCLNamePool pool;
    const SCLElement top("SCL", nullptr, nullptr);
    QCOMPARE(Visited(&top), QStringList());
}

void PreorderWalkTest::theEndIsNullAgainAndAgain()
{
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    SCLElement* child = Add(&top, "IED", "1");
    PreorderWalk walk(&top);
    QCOMPARE(walk.Next(), child);
    QVERIFY(walk.Next() == nullptr);
    QVERIFY(walk.Next() == nullptr);
}

void PreorderWalkTest::eachElementComesBeforeItsChildren()
{
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    SCLElement* first = Add(&top, "A", "1");
    Add(Add(first, "A", "2"), "A", "3");
    Add(first, "A", "4");
    Add(Add(&top, "A", "5"), "A", "6");
    QCOMPARE(Visited(&top), QStringList({"1", "2", "3", "4", "5", "6"}));
}

void PreorderWalkTest::groupsComeInAscendingTagId()
{
    SCLNamePool pool;
    pool.AddTagToNamePool("B");
    pool.AddTagToNamePool("A");
    SCLElement top("SCL", nullptr, nullptr);
    SCLElement* a = Add(&top, "A", "3");
    SCLElement* b = Add(&top, "B", "1");
    Add(a, "B", "4");
    Add(b, "A", "2");
    Add(&top, "SCL", "5");
    QCOMPARE(Visited(&top), QStringList({"1", "2", "3", "4", "5"}));
}

void PreorderWalkTest::emptyGroupsAreSkipped_data()
{
    QTest::addColumn<QString>("emptied");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("first") << "A" << QStringList({"B", "C", "D"});
    QTest::newRow("between") << "BC" << QStringList({"A", "D"});
    QTest::newRow("last") << "D" << QStringList({"A", "B", "C"});
    QTest::newRow("all") << "ABCD" << QStringList();
    QTest::newRow("none") << "" << QStringList({"A", "B", "C", "D"});
}

void PreorderWalkTest::emptyGroupsAreSkipped()
{
    QFETCH(QString, emptied);
    QFETCH(QStringList, expected);
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    for (const char* tag : {"A", "B", "C", "D"})
        Add(&top, tag, tag);
    for (const QChar tag : emptied)
        top.RemoveChild(top.GetFirstChild(tag), false);
    QCOMPARE(Visited(&top), expected);
}

void PreorderWalkTest::theWalkStaysBelowItsTop()
{
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    Add(&top, "IED", "1");
    SCLElement* second = Add(&top, "IED", "2");
    Add(second, "LN", "3");
    Add(&top, "IED", "4");
    QCOMPARE(Visited(second), QStringList({"3"}));
}

void PreorderWalkTest::valuesMayChangeDuringTheWalk()
{
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    Add(Add(&top, "IED", "1"), "LN", "2");
    Add(&top, "IED", "3");
    PreorderWalk walk(&top);
    while (SCLElement* element = walk.Next()) {
        element->SetValue(element->GetAttribute("n"), false);
        element->RemoveAttribute("n", false);
    }
    QCOMPARE(ElementText(&top), QString("<SCL><IED>1<LN>2</LN></IED><IED>3</IED></SCL>"));
}

void PreorderWalkTest::itAgreesWithAPlainRecursion()
{
    const SCLNamePool pool;
    std::mt19937 random(7);
    const auto upTo = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    const QStringList tags{"A", "B", "C", "D"};
    for (int tree = 0; tree < 300; ++tree) {
        SCLElement top("SCL", nullptr, nullptr);
        QList<SCLElement*> all{&top};
        for (int i = upTo(60); i > 0; --i) {
            SCLElement* parent = all.at(upTo(static_cast<int>(all.size())));
            all.append(parent->CreateChild(tags.at(upTo(4)), -1, false));
            parent->CreateChild(tags.at(upTo(4)), 1000, false);
        }
        QList<SCLElement*> expected;
        AppendBelow(&top, expected);
        QList<SCLElement*> visited;
        PreorderWalk walk(&top);
        while (SCLElement* element = walk.Next())
            visited.append(element);
        QCOMPARE(visited, expected);
    }
}

void PreorderWalkTest::aMillionLevels()
{
    const SCLNamePool pool;
    SCLElement top("SCL", nullptr, nullptr);
    constexpr int depth = 1000000;
    const QString tag = QStringLiteral("N");
    SCLElement* lowest = &top;
    for (int i = 0; i < depth; ++i)
        lowest = lowest->CreateChild(tag, -1, false);
    PreorderWalk walk(&top);
    int count = 0;
    SCLElement* last = nullptr;
    while (SCLElement* element = walk.Next()) {
        ++count;
        last = element;
    }
    QCOMPARE(count, depth);
    QCOMPARE(last, lowest);
}

QTEST_APPLESS_MAIN(PreorderWalkTest)
#include "PreorderWalkTest.moc"
