// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/TagNesting.h>
#include <corvane/elements/TreeBuilder.h>

#include <QObject>
#include <QTest>

#include <functional>
#include <memory>
#include <random>
#include <vector>

using namespace Corvane;
using namespace Corvane::Internal;

namespace
{

constexpr unsigned short beyond = TagSet::Count;

// Ids that no test has used before: the table keeps what it was told.
unsigned short FreshId()
{
    static unsigned short last = TagSet::Count;
    return --last;
}

// Tags that no test has used before.
QString FreshTag()
{
    static int count = 0;
    return QStringLiteral("tag%1").arg(++count);
}

bool MayHold(unsigned short parent, unsigned short child)
{
    return TagNesting::HoldersOf(child).Has(parent);
}

// The order of a search as a plain recursion.
void AppendMatches(SCLElement* element, const QString& tag, QList<SCLElement*>& matches)
{
    matches += element->FindChildByType(tag, false);
    const QList<SCLElement*> children = element->GetChildList();
    for (SCLElement* child : children)
        AppendMatches(child, tag, matches);
}

QList<SCLElement*> Matches(SCLElement* top, const QString& tag)
{
    QList<SCLElement*> matches;
    AppendMatches(top, tag, matches);
    return matches;
}

/// A tree, and a tag that must be found once in it.
struct Hidden {
    std::unique_ptr<SCLElement> top;
    QString tag;
};

Hidden NewTree()
{
    return {std::make_unique<SCLElement>(FreshTag(), nullptr, nullptr), FreshTag()};
}

Hidden Created()
{
    Hidden hidden = NewTree();
    hidden.top->CreateChild(FreshTag(), -1, false)->CreateChild(hidden.tag, -1, false);
    return hidden;
}

Hidden Attached()
{
    Hidden hidden = NewTree();
    auto* branch = new SCLElement(FreshTag(), nullptr, nullptr);
    branch->CreateChild(hidden.tag, -1, false);
    hidden.top->CreateChild(FreshTag(), -1, false)->AttachChild(branch, -1, false);
    return hidden;
}

Hidden Cloned()
{
    Hidden hidden = Created();
    hidden.top.reset(hidden.top->Clone(true));
    return hidden;
}

Hidden Loaded()
{
    Hidden hidden = NewTree();
    TreeBuilder builder(nullptr);
    hidden.top.reset(builder.StartElement(FreshTag()));
    builder.StartElement(FreshTag());
    builder.StartElement(hidden.tag);
    return hidden;
}

Hidden ReadFromImage()
{
    Hidden hidden = NewTree();
    const QString tag = FreshTag();
    SCLElement source(tag, nullptr, nullptr);
    source.CreateChild(FreshTag(), -1, false)->CreateChild(hidden.tag, -1, false);
    hidden.top->CreateChild(tag, -1, false)->ReadFromBinary(source.WriteToBinary());
    return hidden;
}

void Retag(SCLElement* element)
{
    SCLElement source(FreshTag(), nullptr, nullptr);
    element->ReadFromBinary(source.WriteToBinary());
}

// The element stays in the group of its old tag.
Hidden RetaggedBeforeItHasChildren()
{
    Hidden hidden = NewTree();
    SCLElement* element = hidden.top->CreateChild(FreshTag(), -1, false);
    Retag(element);
    element->CreateChild(hidden.tag, -1, false);
    return hidden;
}

Hidden RetaggedBeforeItIsAttached()
{
    Hidden hidden = NewTree();
    auto* branch = new SCLElement(FreshTag(), nullptr, nullptr);
    branch->CreateChild(hidden.tag, -1, false);
    Retag(branch);
    hidden.top->AttachChild(branch, -1, false);
    return hidden;
}

// The element stays in the group of its old tag and shares the children of another.
Hidden Assigned(SCLElement& source)
{
    Hidden hidden = NewTree();
    source.CreateChild(FreshTag(), -1, false)->CreateChild(hidden.tag, -1, false);
    *hidden.top->CreateChild(FreshTag(), -1, false) = source;
    return hidden;
}

// To another parent, if that does not stand below the element.
void Move(SCLElement* element, SCLElement* parent)
{
    SCLElement* before = element->GetParent(QString());
    if (!before)
        return;
    before->DetachChild(element, false);
    if (!parent->AttachChild(element, -1, false))
        before->AttachChild(element, -1, false);
}

} // namespace

class TagNestingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anElementHoldsWhatItsChildrenHold();
    void theOrderOfNotesDoesNotMatter();
    void holdingIsNotBeingHeld();
    void aTagMayHoldItself();
    void idsBeyondTheTableMayHoldAnything();
    void whatHoldsAnIdBeyondTheTableMayHoldAnything();

    void aWalkEntersTheGivenTagsOnly();
    void searchesFindWhatEachWayOfChangeBringsIn_data();
    void searchesFindWhatEachWayOfChangeBringsIn();
    void searchesFindWhatAnAssignmentBringsIn();
    void searchesAgreeWithAPlainRecursionUnderRandomChanges();

private:
    const SCLNamePool m_pool;
};

void TagNestingTest::anElementHoldsWhatItsChildrenHold()
{
    const unsigned short top = FreshId();
    const unsigned short middle = FreshId();
    const unsigned short bottom = FreshId();
    TagNesting::Note(top, middle);
    QVERIFY(MayHold(top, middle));
    QVERIFY(!MayHold(top, bottom));
    TagNesting::Note(middle, bottom);
    QVERIFY(MayHold(middle, bottom));
    QVERIFY(MayHold(top, bottom));
}

void TagNestingTest::theOrderOfNotesDoesNotMatter()
{
    std::vector<unsigned short> chain(12);
    for (unsigned short& id : chain)
        id = FreshId();
    for (const std::size_t link : {3U, 9U, 0U, 7U, 5U, 1U, 10U, 8U, 2U, 6U, 4U})
        TagNesting::Note(chain[link], chain[link + 1]);
    for (std::size_t upper = 0; upper < chain.size(); ++upper) {
        for (std::size_t lower = 0; lower < chain.size(); ++lower)
            QCOMPARE(MayHold(chain[upper], chain[lower]), upper < lower);
    }
}

void TagNestingTest::holdingIsNotBeingHeld()
{
    const unsigned short outer = FreshId();
    const unsigned short inner = FreshId();
    TagNesting::Note(outer, inner);
    QVERIFY(!MayHold(inner, outer));
    QVERIFY(!MayHold(inner, inner));
    QVERIFY(!MayHold(outer, outer));
}

void TagNestingTest::aTagMayHoldItself()
{
    const unsigned short tag = FreshId();
    const unsigned short other = FreshId();
    TagNesting::Note(tag, tag);
    QVERIFY(MayHold(tag, tag));
    QVERIFY(!MayHold(tag, other));
    TagNesting::Note(tag, other);
    TagNesting::Note(other, tag);
    QVERIFY(MayHold(other, other));
}

void TagNestingTest::idsBeyondTheTableMayHoldAnything()
{
    QVERIFY(MayHold(beyond, FreshId()));
    QVERIFY(MayHold(0xFFFF, 0xFFFE));
    QVERIFY(MayHold(SCLNamePool::m_uInvalidId, FreshId()));
    QVERIFY(!MayHold(FreshId(), beyond));
}

void TagNestingTest::whatHoldsAnIdBeyondTheTableMayHoldAnything()
{
    const unsigned short top = FreshId();
    const unsigned short holder = FreshId();
    const unsigned short other = FreshId();
    TagNesting::Note(top, holder);
    TagNesting::Note(holder, beyond);
    for (const unsigned short tag :
         {FreshId(), other, beyond, static_cast<unsigned short>(0xFFFF)}) {
        QVERIFY(MayHold(holder, tag));
        QVERIFY(MayHold(top, tag));
        QVERIFY(!MayHold(other, tag));
    }
}

void TagNestingTest::aWalkEntersTheGivenTagsOnly()
{
    const QString left = FreshTag();
    const QString right = FreshTag();
    const QString leaf = FreshTag();
    SCLElement top(FreshTag(), nullptr, nullptr);
    SCLElement* first = top.CreateChild(left, -1, false);
    first->CreateChild(FreshTag(), -1, false)->CreateChild(FreshTag(), -1, false);
    SCLElement* second = top.CreateChild(right, -1, false);
    SCLElement* inner = second->CreateChild(left, -1, false);
    inner->CreateChild(leaf, -1, false);

    PreorderWalk walk(&top, TagNesting::HoldersOf(SCLNamePool::Instance()->GetIdFromTag(leaf)));
    QCOMPARE(walk.Next(), first);
    QCOMPARE(walk.Next(), second);
    QCOMPARE(walk.Next(), inner);
    QVERIFY(walk.Next() == nullptr);
}

void TagNestingTest::searchesFindWhatEachWayOfChangeBringsIn_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("created") << 0;
    QTest::newRow("attached") << 1;
    QTest::newRow("cloned") << 2;
    QTest::newRow("loaded") << 3;
    QTest::newRow("read from an image") << 4;
    QTest::newRow("retagged before it has children") << 5;
    QTest::newRow("retagged before it is attached") << 6;
}

void TagNestingTest::searchesFindWhatEachWayOfChangeBringsIn()
{
    QFETCH(const int, way);
    const std::vector<std::function<Hidden()>> ways{Created,
                                                    Attached,
                                                    Cloned,
                                                    Loaded,
                                                    ReadFromImage,
                                                    RetaggedBeforeItHasChildren,
                                                    RetaggedBeforeItIsAttached};
    const Hidden hidden = ways.at(static_cast<std::size_t>(way))();
    const QList<SCLElement*> expected = Matches(hidden.top.get(), hidden.tag);
    QCOMPARE(expected.size(), 1);
    QCOMPARE(hidden.top->FindChildByType(hidden.tag, true), expected);
    QCOMPARE(hidden.top->FindChild(hidden.tag, QMap<QString, QString>(), true), expected.first());
}

void TagNestingTest::searchesFindWhatAnAssignmentBringsIn()
{
    SCLElement source(FreshTag(), nullptr, nullptr);
    const Hidden hidden = Assigned(source);
    QCOMPARE(hidden.top->FindChildByType(hidden.tag, true), Matches(&source, hidden.tag));
    QCOMPARE(hidden.top->FindChildByType(hidden.tag, true).size(), 1);
    *hidden.top->GetChildList().first() = SCLElement(FreshTag(), nullptr, nullptr);
}

// Tags of the first trees have their places in the table, those of the last are beyond it.
void TagNestingTest::searchesAgreeWithAPlainRecursionUnderRandomChanges()
{
    std::mt19937 random(11);
    const auto upTo = [&random](auto count) {
        return static_cast<int>(random() % static_cast<unsigned int>(count));
    };
    int found = 0;
    for (int tree = 0; tree < 150; ++tree) {
        const QStringList tags{FreshTag(), FreshTag(), FreshTag(), FreshTag(), FreshTag()};
        SCLElement top(tags.first(), nullptr, nullptr);
        QList<SCLElement*> all{&top};
        for (int change = 0; change < 60; ++change) {
            SCLElement* element = all.at(upTo(all.size()));
            SCLElement* other = all.at(upTo(all.size()));
            const bool mayGrow = top.GetChildCount(true) < 300;
            switch (upTo(6)) {
            case 0:
                Move(element, other);
                break;
            case 1:
                if (mayGrow)
                    other->AttachChild(element->Clone(true), 0, false);
                break;
            case 2:
                if (mayGrow && other->GetTag() == element->GetTag())
                    other->ReadFromBinary(element->WriteToBinary());
                break;
            default:
                all.append(element->CreateChild(tags.at(upTo(tags.size())), -1, false));
            }
        }
        for (const QString& tag : tags) {
            const QList<SCLElement*> expected = Matches(&top, tag);
            QCOMPARE(top.FindChildByType(tag, true), expected);
            found += static_cast<int>(expected.size());
        }
    }
    QVERIFY(SCLNamePool::Instance()->GetLastTagId() > TagSet::Count);
    QVERIFY(found > 1000);
}

QTEST_APPLESS_MAIN(TagNestingTest)
#include "TagNestingTest.moc"
