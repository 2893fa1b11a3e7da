// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <limits>
#include <memory>
#include <random>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

namespace
{

using Owned = std::unique_ptr<SCLElement>;

constexpr int g_depth = 1000000;

Owned Detached(const QString& tag)
{
    return std::make_unique<SCLElement>(tag, nullptr, nullptr);
}

void FillTagPool()
{
    for (int i = 0; i < 65535; ++i)
        SCLNamePool::Instance()->AddTagToNamePool(QString::number(i));
}

// A chain of N elements below the top; returns the lowest.
SCLElement* GrowChain(SCLElement* top, int depth)
{
    const QString tag = QStringLiteral("N");
    SCLElement* element = top;
    for (int i = 0; i < depth; ++i)
        element = element->CreateChild(tag, -1, false);
    return element;
}

// Whether all below an element have that document and a parent that lists them.
bool IsSound(SCLElement* top, const SCLDocument* document)
{
    QList<SCLElement*> open{top};
    while (!open.isEmpty()) {
        SCLElement* element = open.takeLast();
        if (element->GetDocument() != document)
            return false;
        const QList<SCLElement*> children = element->GetChildList();
        for (SCLElement* child : children) {
            if (child->GetParent("") != element || element->GetChildPos(child) < 0)
                return false;
        }
        open += children;
    }
    return true;
}

} // namespace

class SCLElement_ChildrenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void createChildAppendsReportsAndMarks();
    void createChildWithoutNotifyOnlyMarks();
    void createChildSendsWhenTheChildStands();
    void createChildInsertsAtItsPosition_data();
    void createChildInsertsAtItsPosition();
    void createChildBeyondTheGroupFails();
    void aFailedPositionLeavesTheTagPooledAndTheElementUsable();
    void createChildWithoutATagFailsAndPoolsNothing();
    void createChildWithoutADocumentSendsNothing();
    void createChildInAFullPoolGivesNull();

    void createChildSetsAttributesInTheOrderOfTheirNames();
    void createChildWithAttributesReportsTheCompleteChild();
    void createChildWithAttributesMarksBeforeItSends();
    void createChildWithAttributesWithoutNotifyOnlyMarks();
    void createChildWithAttributesFailsAsWithout();
    void createChildWithAttributesInAFullPoolDoesNotCrash();

    void attachChildEntersReportsAndMarks();
    void attachChildWithoutNotifyOnlyMarks();
    void attachChildSendsAtTheEnd();
    void attachChildSetsTheDocumentInTheWholeSubtree();
    void attachChildOutsideADocumentClearsTheDocument();
    void attachChildInsertsAtItsPosition_data();
    void attachChildInsertsAtItsPosition();
    void attachingTwiceFails();
    void attachingNothingFails();
    void attachChildBeyondTheGroupFails();
    void attachChildRefusesItselfAndItsAncestors();
    void attachChildDoesNotTellTheOldParent();

    void detachChildTakesOutReportsAndMarks();
    void detachChildWithoutNotifyOnlyMarks();
    void aDetachedChildIsFullyInTheTreeDuringTheSignalAndTheMark();
    void aDetachedSubtreeHasNoDocumentAndNoParent();
    void detachingWhatIsNoChildFails();
    void aDetachedChildCanBeAttachedAgain();

    void removeChildDeletesReportsAndMarks();
    void removeChildWithoutNotifyOnlyMarks();
    void aRemovedChildIsFullyInTheTreeDuringTheSignal();
    void removeChildMarksWhenTheChildIsGone();
    void descendantsOfARemovedChildSendNothing();
    void removingWhatIsNoChildFails();
    void anEmptiedGroupShowsNowhere();
    void removeChildWithoutADocumentRemoves();

    void moveChildMovesInsideItsGroup_data();
    void moveChildMovesInsideItsGroup();
    void moveChildOutsideTheGroupFails_data();
    void moveChildOutsideTheGroupFails();
    void moveChildWithoutNotifyOnlyMarks();
    void moveChildSendsAfterTheMoveAndBeforeTheMark();
    void moveChildOfAnUnknownTagPoolsNothing();
    void moveChildWithoutADocumentMoves();

    void clearChildDeletesAllSilently();
    void clearChildLeavesAnElementThatGrowsAgain();

    void childrenAreGroupedByTag();
    void groupsStandInTheOrderInWhichTheirTagsWereMet();
    void theChildListIsACopyOfPointers();
    void childrenAreCounted();
    void positionsAreThoseOfTheGroup();
    void readingChildrenPoolsNothing();

    void aDeepCloneIsAnEqualTreeOfItsOwn();
    void aShallowCloneHasNoChildren();
    void aCloneReportsNothing();
    void cloningLeavesTheSource();
    void cloningPoolsTheEmptyTag();
    void emptyGroupsAreCloned();
    void aCloneKeepsDuplicateAndNamelessAttributes();
    void aCloneInAFullPoolKeepsItsTag();
    void anAttachedCloneBelongsToTheDocument();

    void aSlotMayTakeOutTheChildThatIsBeingTakenOut_data();
    void aSlotMayTakeOutTheChildThatIsBeingTakenOut();
    void aSlotMayMoveTheChildThatIsBeingRemovedElsewhere();
    void aSlotMayRemoveTheSiblingsOfTheChildThatIsBeingRemoved();
    void aSlotMayClearTheParentOfTheChildThatIsBeingRemoved();
    void aSlotMayRemoveTheChildThatWasJustAdded();
    void aSlotMayRemoveTheChildThatWasJustMoved();
    void aSlotMayAddAnotherChildOfTheTag();

    void aMillionLevelsAreBuiltCountedClonedAndDestroyed();
    void aMillionLevelsAreAttachedAndDetached();
    void aHundredThousandChildrenOfOneTag();
    void randomEditsKeepTheTreeSound();
};

void SCLElement_ChildrenTest::createChildAppendsReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    SCLElement* child = root->CreateChild("IED", -1, true);
    QCOMPARE(child, At(root, "IED[1]"));
    QCOMPARE(child->GetParent(""), root);
    QCOMPARE(child->GetDocument(), document);
    QCOMPARE(ElementText(root), QString("<SCL><IED name=\"A\"/><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList({"addElement <IED/>", "modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::createChildWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    QVERIFY(document->Root()->CreateChild("IED", -1, false));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::createChildSendsWhenTheChildStands()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN/></SCL>");
    SCLElement* root = document->Root();
    QStringList seen;
    SCLElement* added = nullptr;
    connect(document, &SCLDocument::sigAddElement, this, [&](SCLElement* element) {
        added = element;
        seen.append(ElementText(root));
        seen.append(QString::number(root->GetChildPos(element)));
        seen.append(document->GetModified() ? "modified" : "not modified");
    });
    SCLElement* child = root->CreateChild("LN", 0, true);
    QCOMPARE(added, child);
    QCOMPARE(seen, QStringList({"<SCL><LN/><LN/></SCL>", "0", "not modified"}));
}

void SCLElement_ChildrenTest::createChildInsertsAtItsPosition_data()
{
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("expected");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("between") << 1 << 1;
    QTest::newRow("the size of the group") << 2 << 2;
    QTest::newRow("-1") << -1 << 2;
    QTest::newRow("-100") << -100 << 2;
    QTest::newRow("least") << std::numeric_limits<int>::min() << 2;
}

void SCLElement_ChildrenTest::createChildInsertsAtItsPosition()
{
    QFETCH(int, pos);
    QFETCH(int, expected);
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><P/><LN n='a'/><P/><LN n='b'/><P/><P/></SCL>");
    SCLElement* a = At(root, "LN[0]");
    SCLElement* b = At(root, "LN[1]");
    QList<SCLElement*> order{a, b};
    SCLElement* child = root->CreateChild("LN", pos, true);
    order.insert(expected, child);
    QCOMPARE(root->FindChildByType("LN", false), order);
    QCOMPARE(root->GetChildPos(child), expected);
}

void SCLElement_ChildrenTest::createChildBeyondTheGroupFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN/><LN/><P/><P/><P/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    QVERIFY(root->CreateChild("LN", 5, true) == nullptr);
    QVERIFY(root->CreateChild("LN", 3, true) == nullptr);
    QVERIFY(root->CreateChild("LN", std::numeric_limits<int>::max(), true) == nullptr);
    QCOMPARE(root->GetChildCount(true), 5);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QVERIFY(root->CreateChild("LN", 2, true) != nullptr);
}

void SCLElement_ChildrenTest::aFailedPositionLeavesTheTagPooledAndTheElementUsable()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    QVERIFY(root->CreateChild("LN", 1, true) == nullptr);
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("LN")), 2);
    QVERIFY(root->GetChildList().isEmpty());
    QCOMPARE(root->GetChildCount(true), 0);
    QVERIFY(root->GetFirstChild("LN") == nullptr);
    QVERIFY(root->FindChild("LN", 0) == nullptr);
    QVERIFY(root->FindChildByType("LN", true).isEmpty());
    QVERIFY(!root->MoveChild("LN", 0, 1, true));
    QVERIFY(!document->GetModified());
    QCOMPARE(WrittenText(root), QString("<SCL/>"));
    QVERIFY(root->CreateChild("LN", 0, true) != nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><LN/></SCL>"));
}

void SCLElement_ChildrenTest::createChildWithoutATagFailsAndPoolsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    QVERIFY(document->Root()->CreateChild("", -1, true) == nullptr);
    QVERIFY(document->Root()->CreateChild(QString(), 0, true) == nullptr);
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("")), 0);
    QCOMPARE(int(SCLNamePool::Instance()->GetLastTagId()), 1);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::createChildWithoutADocumentSendsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    const Owned ied = Detached("IED");
    ied->SetParent(document->Root());
    SCLElement* child = ied->CreateChild("LN", -1, true);
    QVERIFY(child->GetDocument() == nullptr);
    QCOMPARE(child->GetParent(""), ied.get());
    QCOMPARE(ElementText(ied.get()), QString("<IED><LN/></IED>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::createChildInAFullPoolGivesNull()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    FillTagPool();
    const SignalLog log(document);
    QVERIFY(root->CreateChild("refused", -1, true) == nullptr);
    QVERIFY(root->CreateChild("refused", {{"name", "A"}}, -1, true) == nullptr);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QVERIFY(root->CreateChild("17", -1, true) != nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><17/></SCL>"));
}

void SCLElement_ChildrenTest::createChildSetsAttributesInTheOrderOfTheirNames()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    const QMap<QString, QString> attributes{
        {"prefix", "P"}, {"inst", "1"}, {"Zone", ""}, {"lnClass", "XCBR"}};
    SCLElement* child = ied->CreateChild("LN", attributes, -1, true);
    QCOMPARE(ElementText(child),
             QString("<LN Zone=\"\" inst=\"1\" lnClass=\"XCBR\" prefix=\"P\"/>"));
}

void SCLElement_ChildrenTest::createChildWithAttributesReportsTheCompleteChild()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    document->SetModified(true, false);
    const SignalLog log(document);
    SCLElement* child =
        document->Root()->CreateChild("IED", {{"name", "A"}, {"desc", "D"}}, -1, true);
    QCOMPARE(log.Lines(), QStringList({"addElement <IED desc=\"D\" name=\"A\"/>"}));
    QCOMPARE(child, At(document->Root(), "IED"));
}

void SCLElement_ChildrenTest::createChildWithAttributesMarksBeforeItSends()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    document->Root()->CreateChild("IED", {{"name", "A"}}, -1, true);
    QCOMPARE(log.Lines(),
             QStringList({"modifiedStateChanged true", "addElement <IED name=\"A\"/>"}));
}

void SCLElement_ChildrenTest::createChildWithAttributesWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    document->Root()->CreateChild("IED", {{"name", "A"}}, -1, false);
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED name=\"A\"/></SCL>"));
}

void SCLElement_ChildrenTest::createChildWithAttributesFailsAsWithout()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    const QMap<QString, QString> attributes{{"name", "A"}};
    QVERIFY(root->CreateChild("", attributes, -1, true) == nullptr);
    QVERIFY(root->CreateChild("LN", attributes, 2, true) == nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><LN/></SCL>"));
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromAtt("name")), 0);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QVERIFY(root->CreateChild("LN", attributes, 0, true) != nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><LN name=\"A\"/><LN/></SCL>"));
}

void SCLElement_ChildrenTest::createChildWithAttributesInAFullPoolDoesNotCrash()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    for (int i = 0; i < 65535; ++i)
        SCLNamePool::Instance()->AddAttToNamePool(QString::number(i));
    SCLElement* child = ied->CreateChild("LN", {{"17", "x"}, {"refused", "y"}}, -1, true);
    QCOMPARE(ElementText(child), QString("<LN 17=\"x\"/>"));
}

void SCLElement_ChildrenTest::attachChildEntersReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    SCLElement* ied = Detached("IED").release();
    ied->SetAttribute("name", "B", false);
    ied->CreateChild("LN", -1, false);
    QVERIFY(root->AttachChild(ied, -1, true));
    QCOMPARE(ElementText(root), QString("<SCL><IED name=\"A\"/><IED name=\"B\"><LN/></IED></SCL>"));
    QCOMPARE(log.Lines(),
             QStringList({"addElement <IED name=\"B\"><LN/></IED>", "modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::attachChildWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    QVERIFY(document->Root()->AttachChild(Detached("IED").release(), 0, false));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::attachChildSendsAtTheEnd()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    bool stands = false;
    bool modified = true;
    connect(document, &SCLDocument::sigAddElement, this, [&](SCLElement* element) {
        stands = element->GetParent("") == root && root->GetChildPos(element) == 0 &&
                 IsSound(root, document);
        modified = document->GetModified();
    });
    SCLElement* ied = Detached("IED").release();
    ied->CreateChild("LN", -1, false);
    root->AttachChild(ied, -1, true);
    QVERIFY(stands);
    QVERIFY(!modified);
}

void SCLElement_ChildrenTest::attachChildSetsTheDocumentInTheWholeSubtree()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* ied = Detached("IED").release();
    SCLElement* deep = ied->CreateChild("LN", -1, false)
                           ->CreateChild("DOI", -1, false)
                           ->CreateChild("DAI", -1, false);
    ied->CreateChild("Private", -1, false);
    document->Root()->AttachChild(ied, -1, true);
    QCOMPARE(deep->GetDocument(), document);
    QVERIFY(IsSound(document->Root(), document));
}

void SCLElement_ChildrenTest::attachChildOutsideADocumentClearsTheDocument()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const Owned parent = Detached("IED");
    auto* child = new SCLElement("LN", document, nullptr);
    child->CreateChild("DOI", -1, false);
    QCOMPARE(At(child, "DOI")->GetDocument(), document);
    QVERIFY(parent->AttachChild(child, -1, true));
    QVERIFY(IsSound(parent.get(), nullptr));
}

void SCLElement_ChildrenTest::attachChildInsertsAtItsPosition_data()
{
    createChildInsertsAtItsPosition_data();
}

void SCLElement_ChildrenTest::attachChildInsertsAtItsPosition()
{
    QFETCH(int, pos);
    QFETCH(int, expected);
    const SCLNamePool pool;
    const Owned parent = Detached("IED");
    parent->CreateChild("P", -1, false);
    QList<SCLElement*> order{parent->CreateChild("LN", -1, false),
                             parent->CreateChild("LN", -1, false)};
    SCLElement* child = Detached("LN").release();
    QVERIFY(parent->AttachChild(child, pos, true));
    order.insert(expected, child);
    QCOMPARE(parent->FindChildByType("LN", false), order);
}

void SCLElement_ChildrenTest::attachingTwiceFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* ied = Detached("IED").release();
    QVERIFY(document->Root()->AttachChild(ied, -1, true));
    document->SetModified(false, false);
    const SignalLog log(document);
    QVERIFY(!document->Root()->AttachChild(ied, -1, true));
    QVERIFY(!document->Root()->AttachChild(ied, 0, true));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED/></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::attachingNothingFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    QVERIFY(!document->Root()->AttachChild(nullptr, -1, true));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::attachChildBeyondTheGroupFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    const Owned ln = Detached("LN");
    ln->CreateChild("DOI", -1, false);
    QVERIFY(!root->AttachChild(ln.get(), 2, true));
    QVERIFY(ln->GetParent("") == nullptr);
    QVERIFY(IsSound(ln.get(), nullptr));
    const Owned ied = Detached("IED");
    QVERIFY(!root->AttachChild(ied.get(), 1, true));
    QVERIFY(ied->GetDocument() == nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><LN/></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::attachChildRefusesItselfAndItsAncestors()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN><DOI/></LN></IED></SCL>");
    SCLElement* root = document->Root();
    SCLElement* doi = At(root, "IED/LN/DOI");
    const SignalLog log(document);
    QVERIFY(!doi->AttachChild(doi, -1, true));
    QVERIFY(!doi->AttachChild(At(root, "IED/LN"), -1, true));
    QVERIFY(!doi->AttachChild(At(root, "IED"), -1, true));
    QVERIFY(!doi->AttachChild(root, -1, true));
    QVERIFY(!root->AttachChild(root, -1, true));
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN><DOI/></LN></IED></SCL>"));
    QVERIFY(IsSound(root, document));
    QCOMPARE(log.Lines(), QStringList());

    const Owned alone = Detached("IED");
    QVERIFY(!alone->AttachChild(alone.get(), -1, true));
    QCOMPARE(ElementText(alone.get()), QString("<IED/>"));
}

void SCLElement_ChildrenTest::attachChildDoesNotTellTheOldParent()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* from = At(root, "IED[0]");
    SCLElement* to = At(root, "IED[1]");
    SCLElement* ln = At(from, "LN");
    QVERIFY(to->AttachChild(ln, -1, true));
    QCOMPARE(ln->GetParent(""), to);
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN/></IED><IED><LN/></IED></SCL>"));

    QVERIFY(from->DetachChild(ln, true));
    QVERIFY(ln->GetParent("") == nullptr);
    QCOMPARE(ElementText(root), QString("<SCL><IED/><IED><LN/></IED></SCL>"));
}

void SCLElement_ChildrenTest::detachChildTakesOutReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED n='1'/><IED n='2'><LN/></IED></SCL>");
    SCLElement* root = document->Root();
    SCLElement* ied = At(root, "IED[1]");
    const SignalLog log(document);
    QVERIFY(root->DetachChild(ied, true));
    const Owned owner(ied);
    QCOMPARE(log.Lines(),
             QStringList({"deleteElement <IED n=\"2\"><LN/></IED>", "modifiedStateChanged true"}));
    QCOMPARE(ElementText(root), QString("<SCL><IED n=\"1\"/></SCL>"));
    QCOMPARE(ElementText(ied), QString("<IED n=\"2\"><LN/></IED>"));
}

void SCLElement_ChildrenTest::detachChildWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const SignalLog log(document);
    const Owned ied(At(document->Root(), "IED"));
    QVERIFY(document->Root()->DetachChild(ied.get(), false));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
    QCOMPARE(ElementText(document->Root()), QString("<SCL/>"));
}

void SCLElement_ChildrenTest::aDetachedChildIsFullyInTheTreeDuringTheSignalAndTheMark()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/><IED><LN/></IED></SCL>");
    SCLElement* root = document->Root();
    SCLElement* ied = At(root, "IED[1]");
    QStringList seen;
    const auto look = [&](const QString& when) {
        seen.append(when + (document->GetModified() ? " modified " : " not modified ") +
                    QString::number(root->GetChildPos(ied)) +
                    (ied->GetParent("") == root && IsSound(root, document) ? " sound" : " torn"));
    };
    connect(document, &SCLDocument::sigDeleteElement, this, [&] { look("signal"); });
    connect(document, &SCLDocument::sigModifiedStateChanged, this, [&] { look("mark"); });
    QVERIFY(root->DetachChild(ied, true));
    const Owned owner(ied);
    QCOMPARE(seen, QStringList({"signal not modified 1 sound", "mark modified 1 sound"}));
}

void SCLElement_ChildrenTest::aDetachedSubtreeHasNoDocumentAndNoParent()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN><DOI/></LN><P/></IED></SCL>");
    const Owned ied(At(root, "IED"));
    QVERIFY(root->DetachChild(ied.get(), true));
    QVERIFY(ied->GetParent("") == nullptr);
    QVERIFY(IsSound(ied.get(), nullptr));
    QCOMPARE(root->GetChildPos(ied.get()), -1);
}

void SCLElement_ChildrenTest::detachingWhatIsNoChildFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED><LN/></IED></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    const Owned alone = Detached("Private");
    QVERIFY(!root->DetachChild(nullptr, true));
    QVERIFY(!root->DetachChild(root, true));
    QVERIFY(!root->DetachChild(alone.get(), true));
    QVERIFY(!root->DetachChild(At(root, "IED/LN"), true));
    QVERIFY(!At(root, "IED[0]")->DetachChild(At(root, "IED[1]/LN"), true));
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN/></IED><IED><LN/></IED></SCL>"));
    QVERIFY(IsSound(root, document));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::aDetachedChildCanBeAttachedAgain()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL><IED n='1'><LN/></IED><IED n='2'/></SCL>");
    SCLDocument* second = control.Open("<SCL/>");
    SCLElement* ied = At(first->Root(), "IED");
    QVERIFY(first->Root()->DetachChild(ied, true));
    QVERIFY(second->Root()->AttachChild(ied, -1, true));
    QCOMPARE(ElementText(first->Root()), QString("<SCL><IED n=\"2\"/></SCL>"));
    QCOMPARE(ElementText(second->Root()), QString("<SCL><IED n=\"1\"><LN/></IED></SCL>"));
    QVERIFY(IsSound(second->Root(), second));

    QVERIFY(second->Root()->DetachChild(ied, true));
    QVERIFY(first->Root()->AttachChild(ied, -1, true));
    QCOMPARE(ElementText(first->Root()),
             QString("<SCL><IED n=\"2\"/><IED n=\"1\"><LN/></IED></SCL>"));
    QVERIFY(IsSound(first->Root(), first));
}

void SCLElement_ChildrenTest::removeChildDeletesReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED n='1'><LN/></IED><IED n='2'/></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    QVERIFY(root->RemoveChild(At(root, "IED"), true));
    QCOMPARE(ElementText(root), QString("<SCL><IED n=\"2\"/></SCL>"));
    QCOMPARE(log.Lines(),
             QStringList({"deleteElement <IED n=\"1\"><LN/></IED>", "modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::removeChildWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const SignalLog log(document);
    QVERIFY(document->Root()->RemoveChild(At(document->Root(), "IED"), false));
    QCOMPARE(ElementText(document->Root()), QString("<SCL/>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::aRemovedChildIsFullyInTheTreeDuringTheSignal()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/><IED><LN/></IED></SCL>");
    SCLElement* root = document->Root();
    QStringList seen;
    connect(document, &SCLDocument::sigDeleteElement, this, [&](SCLElement* element) {
        seen.append(QString::number(root->GetChildPos(element)));
        seen.append(element->GetParent("") == root && IsSound(root, document) ? "sound" : "torn");
        seen.append(document->GetModified() ? "modified" : "not modified");
    });
    QVERIFY(root->RemoveChild(At(root, "IED[1]"), true));
    QCOMPARE(seen, QStringList({"1", "sound", "not modified"}));
}

void SCLElement_ChildrenTest::removeChildMarksWhenTheChildIsGone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    SCLElement* root = document->Root();
    QString seen;
    connect(document, &SCLDocument::sigModifiedStateChanged, this,
            [&] { seen = ElementText(root); });
    QVERIFY(root->RemoveChild(At(root, "IED"), true));
    QCOMPARE(seen, QString("<SCL/>"));
}

void SCLElement_ChildrenTest::descendantsOfARemovedChildSendNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN><DOI/></LN><LN/></IED></SCL>");
    int signalCount = 0;
    connect(document, &SCLDocument::sigDeleteElement, this, [&] { ++signalCount; });
    QVERIFY(document->Root()->RemoveChild(At(document->Root(), "IED"), true));
    QCOMPARE(signalCount, 1);
}

void SCLElement_ChildrenTest::removingWhatIsNoChildFails()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED><LN/></IED></SCL>");
    SCLElement* root = document->Root();
    const SignalLog log(document);
    const Owned alone = Detached("Private");
    QVERIFY(!root->RemoveChild(nullptr, true));
    QVERIFY(!root->RemoveChild(root, true));
    QVERIFY(!root->RemoveChild(alone.get(), true));
    QVERIFY(!root->RemoveChild(At(root, "IED/LN"), true));
    QVERIFY(!At(root, "IED[0]")->RemoveChild(At(root, "IED[1]/LN"), true));
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN/></IED><IED><LN/></IED></SCL>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::anEmptiedGroupShowsNowhere()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED/><LN/></SCL>");
    QVERIFY(root->RemoveChild(At(root, "IED"), true));
    QVERIFY(root->RemoveChild(At(root, "LN"), true));
    QCOMPARE(root->GetChildCount(false), 0);
    QCOMPARE(root->GetChildCount(true), 0);
    QVERIFY(root->GetChildList().isEmpty());
    QVERIFY(root->GetSortedChildList().isEmpty());
    QVERIFY(root->GetFirstChild("IED") == nullptr);
    QVERIFY(root->FindChild(QMap<QString, QString>()) == nullptr);
    root->SetValue("x", false);
    QCOMPARE(WrittenText(root), QString("<SCL>x</SCL>"));
}

void SCLElement_ChildrenTest::removeChildWithoutADocumentRemoves()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->CreateChild("LN", -1, true);
    QVERIFY(ied->RemoveChild(At(ied.get(), "LN"), true));
    QCOMPARE(ElementText(ied.get()), QString("<IED/>"));
}

void SCLElement_ChildrenTest::moveChildMovesInsideItsGroup_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("order");
    QTest::newRow("first to last") << 0 << 3 << "bcda";
    QTest::newRow("last to first") << 3 << 0 << "dabc";
    QTest::newRow("one down") << 1 << 2 << "acbd";
    QTest::newRow("one up") << 2 << 1 << "acbd";
    QTest::newRow("two down") << 0 << 2 << "bcad";
    QTest::newRow("two up") << 3 << 1 << "adbc";
}

void SCLElement_ChildrenTest::moveChildMovesInsideItsGroup()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QString, order);
    TestControl control;
    SCLDocument* document =
        control.Open("<SCL><LN n='a'/><P/><LN n='b'/><LN n='c'/><P/><LN n='d'/></SCL>");
    SCLElement* root = document->Root();
    const QList<SCLElement*> others = root->FindChildByType("P", false);
    const SignalLog log(document);
    QVERIFY(root->MoveChild("LN", from, to, true));
    QString moved;
    const QList<SCLElement*> nodes = root->FindChildByType("LN", false);
    for (SCLElement* ln : nodes)
        moved += ln->GetAttribute("n");
    QCOMPARE(moved, order);
    QCOMPARE(root->FindChildByType("P", false), others);
    QCOMPARE(log.Lines(), QStringList({QStringLiteral("moveElement LN %1 -> %2").arg(from).arg(to),
                                       "modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::moveChildOutsideTheGroupFails_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("no tag") << "" << 0 << 1;
    QTest::newRow("a tag without children") << "SCL" << 0 << 1;
    QTest::newRow("an unknown tag") << "DOI" << 0 << 1;
    QTest::newRow("equal positions") << "LN" << 1 << 1;
    QTest::newRow("from negative") << "LN" << -1 << 0;
    QTest::newRow("to negative") << "LN" << 0 << -1;
    QTest::newRow("from the size") << "LN" << 2 << 0;
    QTest::newRow("to the size") << "LN" << 0 << 2;
    QTest::newRow("from most") << "LN" << std::numeric_limits<int>::max() << 0;
    QTest::newRow("to least") << "LN" << 0 << std::numeric_limits<int>::min();
    QTest::newRow("another case") << "ln" << 0 << 1;
}

void SCLElement_ChildrenTest::moveChildOutsideTheGroupFails()
{
    QFETCH(QString, tag);
    QFETCH(int, from);
    QFETCH(int, to);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='a'/><LN n='b'/><P/><P/><P/></SCL>");
    const QString before = ElementText(document->Root());
    const SignalLog log(document);
    QVERIFY(!document->Root()->MoveChild(tag, from, to, true));
    QCOMPARE(ElementText(document->Root()), before);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::moveChildWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='a'/><LN n='b'/></SCL>");
    const SignalLog log(document);
    QVERIFY(document->Root()->MoveChild("LN", 0, 1, false));
    QCOMPARE(ElementText(document->Root()), QString("<SCL><LN n=\"b\"/><LN n=\"a\"/></SCL>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElement_ChildrenTest::moveChildSendsAfterTheMoveAndBeforeTheMark()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='a'/><LN n='b'/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* a = At(root, "LN[0]");
    SCLElement* moved = nullptr;
    QStringList seen;
    connect(document, &SCLDocument::sigMoveElement, this, [&](SCLElement* element) {
        moved = element;
        seen.append(ElementText(root));
        seen.append(document->GetModified() ? "modified" : "not modified");
    });
    QVERIFY(root->MoveChild("LN", 0, 1, true));
    QCOMPARE(moved, a);
    QCOMPARE(seen, QStringList({"<SCL><LN n=\"b\"/><LN n=\"a\"/></SCL>", "not modified"}));
}

void SCLElement_ChildrenTest::moveChildOfAnUnknownTagPoolsNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL/>");
    QVERIFY(!root->MoveChild("LN", 0, 1, true));
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("LN")), 0);
}

void SCLElement_ChildrenTest::moveChildWithoutADocumentMoves()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    SCLElement* first = ied->CreateChild("LN", -1, true);
    SCLElement* second = ied->CreateChild("LN", -1, true);
    QVERIFY(ied->MoveChild("LN", 1, 0, true));
    QCOMPARE(ied->FindChildByType("LN", false), QList<SCLElement*>({second, first}));
}

void SCLElement_ChildrenTest::clearChildDeletesAllSilently()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL a='1'>x<IED><LN/><LN/></IED><P/><IED/></SCL>");
    const SignalLog log(document);
    document->Root()->ClearChild();
    QCOMPARE(ElementText(document->Root()), QString("<SCL a=\"1\">x</SCL>"));
    QCOMPARE(document->Root()->GetChildCount(true), 0);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::clearChildLeavesAnElementThatGrowsAgain()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN/></IED></SCL>");
    root->ClearChild();
    root->ClearChild();
    root->CreateChild("LN", 0, false);
    root->CreateChild("IED", 0, false);
    QCOMPARE(ElementText(root), QString("<SCL><IED/><LN/></SCL>"));
}

void SCLElement_ChildrenTest::childrenAreGroupedByTag()
{
    const SCLNamePool pool;
    const Owned root = Detached("SCL");
    const char* const tags[] = {"Private", "Text", "Private", "IED", "Text", "Private"};
    int n = 0;
    for (const char* tag : tags)
        root->CreateChild(tag, -1, false)->SetAttribute("n", QString::number(n++), false);
    QCOMPARE(ElementTexts(root->GetChildList()),
             QStringList({"<Private n=\"0\"/>", "<Private n=\"2\"/>", "<Private n=\"5\"/>",
                          "<Text n=\"1\"/>", "<Text n=\"4\"/>", "<IED n=\"3\"/>"}));
}

void SCLElement_ChildrenTest::groupsStandInTheOrderInWhichTheirTagsWereMet()
{
    SCLNamePool pool;
    for (const char* tag : {"C", "A", "B"})
        pool.AddTagToNamePool(tag);
    const Owned root = Detached("SCL");
    for (const char* tag : {"A", "B", "C", "D"})
        root->CreateChild(tag, -1, false);
    QCOMPARE(ElementText(root.get()), QString("<SCL><C/><A/><B/><D/></SCL>"));
}

void SCLElement_ChildrenTest::theChildListIsACopyOfPointers()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED/><LN/><IED/></SCL>");
    QList<SCLElement*> children = root->GetChildList();
    QCOMPARE(children,
             QList<SCLElement*>({At(root, "IED[0]"), At(root, "IED[1]"), At(root, "LN")}));
    children.clear();
    QCOMPARE(root->GetChildCount(false), 3);
    const QList<SCLElement*> walked = root->GetChildList();
    for (SCLElement* child : walked)
        QVERIFY(root->RemoveChild(child, true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
}

void SCLElement_ChildrenTest::childrenAreCounted()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><IED><LN/><LN/><P/></IED><IED><LN/><P/><LN/></IED></SCL>");
    QCOMPARE(root->GetChildCount(false), 2);
    QCOMPARE(root->GetChildCount(true), 8);
    QCOMPARE(At(root, "IED")->GetChildCount(true), 3);
    QCOMPARE(At(root, "IED/LN")->GetChildCount(true), 0);
    QCOMPARE(At(root, "IED/LN")->GetChildCount(false), 0);
}

void SCLElement_ChildrenTest::positionsAreThoseOfTheGroup()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><P/><LN><LN/></LN><P/><LN/></SCL>");
    QCOMPARE(root->GetChildPos(At(root, "LN[0]")), 0);
    QCOMPARE(root->GetChildPos(At(root, "LN[1]")), 1);
    QCOMPARE(root->GetChildPos(At(root, "P[1]")), 1);
    QCOMPARE(root->GetChildPos(nullptr), -1);
    QCOMPARE(root->GetChildPos(root), -1);
    QCOMPARE(root->GetChildPos(At(root, "LN/LN")), -1);
    QCOMPARE(At(root, "P")->GetChildPos(At(root, "LN")), -1);
}

void SCLElement_ChildrenTest::readingChildrenPoolsNothing()
{
    const SCLNamePool pool;
    const Owned root = Detached("SCL");
    root->GetChildList();
    root->GetChildCount(true);
    root->GetSortedChildList();
    root->GetChildPos(root.get());
    root->ClearChild();
    QCOMPARE(int(pool.GetLastTagId()), 1);
}

void SCLElement_ChildrenTest::aDeepCloneIsAnEqualTreeOfItsOwn()
{
    TestControl control;
    SCLDocument* document = control.Open(
        "<SCL><IED name='A' desc='D'>v<LN z='1' a='2'><DOI>x</DOI></LN><P/><LN/></IED></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const Owned clone(ied->Clone(true));
    QCOMPARE(ElementText(clone.get()), ElementText(ied));
    QVERIFY(clone->GetParent("") == nullptr);
    QVERIFY(IsSound(clone.get(), nullptr));
    QVERIFY(At(clone.get(), "LN/DOI") != At(ied, "LN/DOI"));
    QVERIFY(clone->FindAttribute("name") != ied->FindAttribute("name"));
    At(clone.get(), "LN")->SetAttribute("z", "3", true);
    QCOMPARE(At(ied, "LN")->GetAttribute("z"), QString("1"));
}

void SCLElement_ChildrenTest::aShallowCloneHasNoChildren()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED name='A' desc='D'>v<LN/></IED></SCL>");
    const Owned clone(At(root, "IED")->Clone(false));
    QCOMPARE(ElementText(clone.get()), QString("<IED name=\"A\" desc=\"D\">v</IED>"));
    QVERIFY(clone->GetDocument() == nullptr);
    QVERIFY(clone->GetParent("") == nullptr);
}

void SCLElement_ChildrenTest::aCloneReportsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'><LN/></IED></SCL>");
    const SignalLog log(document);
    Owned clone(At(document->Root(), "IED")->Clone(true));
    clone->SetAttribute("name", "B", true);
    clone.reset();
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_ChildrenTest::cloningLeavesTheSource()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'>v<LN/><P/></IED></SCL>");
    SCLElement* root = document->Root();
    const QString before = ElementText(root);
    const Owned clone(root->Clone(true));
    clone->ClearChild();
    QCOMPARE(ElementText(root), before);
    QVERIFY(IsSound(root, document));
}

void SCLElement_ChildrenTest::cloningPoolsTheEmptyTag()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED/></SCL>");
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("")), 0);
    const Owned clone(At(root, "IED")->Clone(false));
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromTag("")), 3);
    QCOMPARE(clone->GetTag(), QString("IED"));
}

void SCLElement_ChildrenTest::emptyGroupsAreCloned()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->CreateChild("LN", 1, false);
    ied->RemoveChild(ied->CreateChild("P", -1, false), false);
    ied->CreateChild("Server", -1, false)->CreateChild("LN", 1, false);
    const Owned clone(ied->Clone(true));
    QCOMPARE(ElementText(clone.get()), QString("<IED><Server/></IED>"));
    QCOMPARE(clone->GetChildCount(true), 1);
    QVERIFY(clone->FindChildByType("LN", true).isEmpty());
    QVERIFY(clone->CreateChild("LN", 0, false) != nullptr);
}

void SCLElement_ChildrenTest::aCloneKeepsDuplicateAndNamelessAttributes()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->SetAttributeList({"name", "", "name"}, {"A", "x", "B"});
    const Owned clone(ied->Clone(false));
    QCOMPARE(ElementText(clone.get()), QString("<IED name=\"A\" =\"x\" name=\"B\"/>"));
}

void SCLElement_ChildrenTest::aCloneInAFullPoolKeepsItsTag()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->CreateChild("LN", -1, false)->SetAttribute("inst", "1", false);
    FillTagPool();
    const Owned clone(ied->Clone(true));
    QCOMPARE(ElementText(clone.get()), QString("<IED><LN inst=\"1\"/></IED>"));
    QCOMPARE(int(pool.GetIdFromTag("")), 0);
}

void SCLElement_ChildrenTest::anAttachedCloneBelongsToTheDocument()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN><DOI/></LN></IED></SCL>");
    SCLElement* root = document->Root();
    QVERIFY(root->AttachChild(At(root, "IED")->Clone(true), 0, true));
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN><DOI/></LN></IED>"
                                        "<IED><LN><DOI/></LN></IED></SCL>"));
    QVERIFY(IsSound(root, document));
}

void SCLElement_ChildrenTest::aSlotMayTakeOutTheChildThatIsBeingTakenOut_data()
{
    QTest::addColumn<bool>("remove");
    QTest::addColumn<bool>("slotRemoves");
    QTest::newRow("removed while removed") << true << true;
    QTest::newRow("detached while removed") << true << false;
    QTest::newRow("removed while detached") << false << true;
    QTest::newRow("detached while detached") << false << false;
}

void SCLElement_ChildrenTest::aSlotMayTakeOutTheChildThatIsBeingTakenOut()
{
    QFETCH(bool, remove);
    QFETCH(bool, slotRemoves);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED n='1'><LN/></IED><IED n='2'/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* ied = At(root, "IED");
    int depth = 0;
    connect(document, &SCLDocument::sigDeleteElement, this, [&](SCLElement* element) {
        if (++depth > 1)
            return;
        if (slotRemoves)
            root->RemoveChild(element, true);
        else
            root->DetachChild(element, true);
    });
    if (remove)
        root->RemoveChild(ied, true);
    else
        root->DetachChild(ied, true);
    QCOMPARE(depth, 2);
    QCOMPARE(ElementText(root), QString("<SCL><IED n=\"2\"/></SCL>"));
    QVERIFY(IsSound(root, document));
    QVERIFY(document->GetModified());
    if (slotRemoves)
        return;
    // Whoever detaches an element owns it.
    const Owned owner(ied);
    QCOMPARE(ElementText(ied), QString("<IED n=\"1\"><LN/></IED>"));
    QVERIFY(ied->GetParent("") == nullptr);
    QVERIFY(IsSound(ied, nullptr));
}

void SCLElement_ChildrenTest::aSlotMayMoveTheChildThatIsBeingRemovedElsewhere()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* from = At(root, "IED[0]");
    SCLElement* to = At(root, "IED[1]");
    connect(document, &SCLDocument::sigDeleteElement, this, [&](SCLElement* element) {
        from->DetachChild(element, false);
        to->AttachChild(element, -1, false);
    });
    from->RemoveChild(At(from, "LN"), true);
    QCOMPARE(ElementText(root), QString("<SCL><IED/><IED><LN/></IED></SCL>"));
    QVERIFY(IsSound(root, document));
}

void SCLElement_ChildrenTest::aSlotMayRemoveTheSiblingsOfTheChildThatIsBeingRemoved()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='1'/><LN n='2'/><LN n='3'/><P/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigDeleteElement, this, [&](SCLElement* element) {
        const QList<SCLElement*> children = root->GetChildList();
        for (SCLElement* child : children) {
            if (child != element)
                root->RemoveChild(child, false);
        }
    });
    QVERIFY(root->RemoveChild(At(root, "LN[1]"), true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
}

void SCLElement_ChildrenTest::aSlotMayClearTheParentOfTheChildThatIsBeingRemoved()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN/><LN/><P/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigDeleteElement, this, [&] { root->ClearChild(); });
    root->RemoveChild(At(root, "LN[1]"), true);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    root->CreateChild("LN", -1, false);
    root->DetachChild(At(root, "LN"), true);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(document->GetModified());
}

void SCLElement_ChildrenTest::aSlotMayRemoveTheChildThatWasJustAdded()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigAddElement, this,
            [&](SCLElement* element) { root->RemoveChild(element, false); });
    root->CreateChild("IED", -1, true);
    root->CreateChild("IED", {{"name", "A"}}, -1, true);
    QVERIFY(root->AttachChild(Detached("IED").release(), -1, true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(document->GetModified());
}

void SCLElement_ChildrenTest::aSlotMayRemoveTheChildThatWasJustMoved()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='1'/><LN n='2'/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigMoveElement, this,
            [&](SCLElement* element) { root->RemoveChild(element, false); });
    QVERIFY(root->MoveChild("LN", 0, 1, true));
    QCOMPARE(ElementText(root), QString("<SCL><LN n=\"2\"/></SCL>"));
}

void SCLElement_ChildrenTest::aSlotMayAddAnotherChildOfTheTag()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><LN n='1'/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigDeleteElement, this, [&] {
        root->CreateChild("LN", {{"n", "2"}}, 0, false);
    });
    QVERIFY(root->RemoveChild(At(root, "LN"), true));
    QCOMPARE(ElementText(root), QString("<SCL><LN n=\"2\"/></SCL>"));
}

void SCLElement_ChildrenTest::aMillionLevelsAreBuiltCountedClonedAndDestroyed()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* lowest = GrowChain(document->Root(), g_depth);
    lowest->SetAttribute("inst", "1", false);
    QCOMPARE(document->Root()->GetChildCount(true), g_depth);
    QCOMPARE(lowest->GetDocument(), document);

    Owned clone(document->Root()->Clone(true));
    QCOMPARE(clone->GetChildCount(true), g_depth);
    SCLElement* cloneLowest = clone->FindChild("N", "inst", "1", true);
    QVERIFY(cloneLowest != nullptr && cloneLowest != lowest);
    QCOMPARE(cloneLowest->GetParent("SCL"), clone.get());
    clone->SetDocument(document);
    QCOMPARE(cloneLowest->GetDocument(), document);
    clone.reset();

    document->Root()->ClearChild();
    QCOMPARE(document->Root()->GetChildCount(true), 0);
}

void SCLElement_ChildrenTest::aMillionLevelsAreAttachedAndDetached()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    SCLElement* chain = Detached("IED").release();
    SCLElement* lowest = GrowChain(chain, g_depth);
    QVERIFY(root->AttachChild(chain, -1, true));
    QCOMPARE(lowest->GetDocument(), document);
    QVERIFY(!lowest->AttachChild(chain, -1, true));
    QVERIFY(!lowest->AttachChild(root, -1, true));
    QVERIFY(root->DetachChild(chain, true));
    QVERIFY(lowest->GetDocument() == nullptr);
    QVERIFY(root->AttachChild(chain, -1, false));
    QVERIFY(root->RemoveChild(chain, true));
    QCOMPARE(root->GetChildCount(true), 0);
}

void SCLElement_ChildrenTest::aHundredThousandChildrenOfOneTag()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i)
        root->CreateChild("FCDA", -1, false);
    QCOMPARE(root->GetChildCount(false), count);
    QVERIFY(root->MoveChild("FCDA", 0, count - 1, true));
    const QList<SCLElement*> children = root->FindChildByType("FCDA", false);
    for (SCLElement* child : children)
        QVERIFY(root->RemoveChild(child, true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
}

void SCLElement_ChildrenTest::randomEditsKeepTheTreeSound()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    std::mt19937 random(20240611);
    const auto upTo = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    const QStringList tags{"A", "B", "C"};
    const auto anywhere = [&] {
        SCLElement* element = root;
        while (element->GetChildCount(false) > 0 && upTo(4) > 0)
            element = element->GetChildList().at(upTo(element->GetChildCount(false)));
        return element;
    };
    int count = 0;
    for (int i = 0; i < 20000; ++i) {
        SCLElement* element = anywhere();
        SCLElement* parent = element->GetParent("");
        switch (upTo(6)) {
        case 0:
        case 1:
            count += element->CreateChild(tags.at(upTo(3)), upTo(4) - 1, true) != nullptr ? 1 : 0;
            break;
        case 2:
            element->MoveChild(tags.at(upTo(3)), upTo(4), upTo(4), true);
            break;
        case 3:
            if (parent != nullptr) {
                count -= element->GetChildCount(true) + 1;
                QVERIFY(parent->RemoveChild(element, true));
            }
            break;
        case 4:
            if (parent != nullptr) {
                QVERIFY(parent->DetachChild(element, true));
                QVERIFY(anywhere()->AttachChild(element, -1, true));
            }
            break;
        default:
            if (count < 500) {
                Owned clone(element->Clone(true));
                if (root->AttachChild(clone.get(), -1, true))
                    count += clone.release()->GetChildCount(true) + 1;
            }
            break;
        }
        QCOMPARE(root->GetChildCount(true), count);
        if (i % 100 == 0)
            QVERIFY(IsSound(root, document));
    }
    QVERIFY(IsSound(root, document));
}

QTEST_MAIN(SCLElement_ChildrenTest)
#include "SCLElement_ChildrenTest.moc"
