// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <memory>
#include <type_traits>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

static_assert(!std::is_polymorphic_v<SCLElement> && !std::is_polymorphic_v<SCLAttribute>,
              "nodes carry no virtual table");
static_assert(std::is_copy_constructible_v<SCLElement> && std::is_copy_assignable_v<SCLElement>);
static_assert(std::is_copy_constructible_v<SCLAttribute> &&
              std::is_copy_assignable_v<SCLAttribute>);

namespace
{

void FillAttributePool()
{
    for (int i = 0; i < 65535; ++i)
        SCLNamePool::Instance()->AddAttToNamePool(QString::number(i));
}

} // namespace

class SCLElementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewElementHasItsTagAlone();
    void theConstructorPoolsTheTag();
    void theConstructorTakesDocumentAndParentAsGiven();
    void itDoesNotEnterItselfAmongItsParentsChildren();
    void theEmptyTagIsATag();
    void aTagKeepsItsPrefix();
    void isEmptyIsAlwaysFalseAndCanEmptyAlwaysTrue();
    void aCopySharesTheMembers();
    void destroyingAnElementReportsNothing();
    void destroyingAChildLeavesItInItsParent();

    void setValueStoresReportsAndMarks();
    void setValueWithoutNotifyOnlyMarks();
    void setValueOfAModifiedDocumentSendsTheValueAlone();
    void anEqualValueIsNoChange();
    void aNullAndAnEmptyValueAreEqual();
    void setValueSendsBeforeItMarks();
    void setValueWithoutADocumentStores();

    void aMissingAttributeReadsAsEmptyAndNotNull();
    void findAttributeGivesTheFirstOfItsName();
    void anAttributeWithoutANameIsNeverFound();
    void attributeNamesCompareExactly();
    void readingAttributesPoolsNothing();
    void attributesKeepTheirOrder();
    void theAttributeListIsACopyOfPointers();

    void aNewAttributeIsReportedWithANullOldValue();
    void aNewAttributeWithAnEmptyValueIsAChange();
    void aChangedAttributeIsReportedWithItsOldValue();
    void anEmptyOldValueIsNotNull();
    void anEqualAttributeValueIsNoChange();
    void setAttributeWithoutNotifyOnlyMarks();
    void setAttributeSendsBeforeItMarks();
    void theSignalNamesTheVeryAttribute();
    void setAttributeWithoutADocumentSendsNothing();
    void eachSetOfANamelessAttributeAppendsOne();
    void aFullPoolRefusesANewAttributeName();

    void removeAttributeReportsAndMarks();
    void removeAttributeWithoutNotifyOnlyMarks();
    void removingAMissingAttributeIsNoChange();
    void aRemovedAttributeIsAliveButNoLongerListed();
    void aRemovedAttributeIsAliveUntilTheMark();
    void removeAttributeTakesTheFirstOfItsName();
    void removeAttributeWithoutADocumentRemoves();

    void setAttributeListReplacesAllAndOnlyMarks();
    void setAttributeListWithoutNamesDoesNothing();
    void setAttributeListOfUnequalListsDoesNothing_data();
    void setAttributeListOfUnequalListsDoesNothing();
    void setAttributeListKeepsDuplicatesAndSearchesTakeTheFirst();
    void setAttributeListMarksEvenWhatIsEqual();
    void setAttributeListWithoutADocumentReplaces();
    void setAttributeListInAFullPoolDoesNotCrash();

    void setDocumentReachesTheWholeSubtreeAndSendsNothing();
    void setDocumentLeavesParentAndSiblingsAlone();
    void setParentSetsThePointerAlone();

    void aSlotMayRemoveTheAttributeThatWasJustSet();
    void aSlotMaySetTheAttributeThatIsBeingRemoved();
    void aSlotMayRemoveTheElementWhoseAttributeWasSet();
    void aSlotMayRemoveTheElementWhoseAttributeIsRemoved();
    void aSlotMayRemoveTheElementWhoseValueWasSet();
    void aSlotMaySetTheValueAgain();

    void twentyThousandAttributesOnOneElement();
};

void SCLElementTest::aNewElementHasItsTagAlone()
{
    const SCLNamePool pool;
    SCLElement element("IED", nullptr, nullptr);
    QCOMPARE(element.GetTag(), QString("IED"));
    QVERIFY(element.GetValue().isNull());
    QVERIFY(element.GetDocument() == nullptr);
    QVERIFY(element.GetParent("") == nullptr);
    QVERIFY(element.GetAttributeList().isEmpty());
    QVERIFY(element.GetChildList().isEmpty());
    QCOMPARE(ElementText(&element), QString("<IED/>"));
}

void SCLElementTest::theConstructorPoolsTheTag()
{
    const SCLNamePool pool;
    const SCLElement first("IED", nullptr, nullptr);
    const SCLElement second("LN", nullptr, nullptr);
    const SCLElement third("IED", nullptr, nullptr);
    QCOMPARE(int(pool.GetIdFromTag("IED")), 1);
    QCOMPARE(int(pool.GetIdFromTag("LN")), 2);
    QCOMPARE(int(pool.GetLastTagId()), 2);
    QCOMPARE(third.GetTag(), QString("IED"));
}

void SCLElementTest::theConstructorTakesDocumentAndParentAsGiven()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const SignalLog log(document);
    SCLElement element("LN", document, document->Root());
    QCOMPARE(element.GetDocument(), document);
    QCOMPARE(element.GetParent(""), document->Root());
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::itDoesNotEnterItselfAmongItsParentsChildren()
{
    const SCLNamePool pool;
    SCLElement parent("IED", nullptr, nullptr);
    SCLElement child("LN", nullptr, &parent);
    QCOMPARE(ElementText(&parent), QString("<IED/>"));
    QCOMPARE(parent.GetChildPos(&child), -1);
}

void SCLElementTest::theEmptyTagIsATag()
{
    const SCLNamePool pool;
    const SCLElement element("", nullptr, nullptr);
    QVERIFY(element.GetTag().isEmpty());
    QCOMPARE(int(pool.GetIdFromTag("")), 1);
}

void SCLElementTest::aTagKeepsItsPrefix()
{
    const SCLNamePool pool;
    const SCLElement element("sxy:SCL", nullptr, nullptr);
    QCOMPARE(element.GetTag(), QString("sxy:SCL"));
}

void SCLElementTest::isEmptyIsAlwaysFalseAndCanEmptyAlwaysTrue()
{
    const SCLNamePool pool;
    SCLElement bare("IED", nullptr, nullptr);
    QVERIFY(!bare.IsEmpty());
    QVERIFY(bare.CanEmpty());
    bare.SetValue("x", false);
    bare.SetAttribute("name", "A", false);
    bare.CreateChild("LN", -1, false);
    QVERIFY(!bare.IsEmpty());
    QVERIFY(bare.CanEmpty());
}

void SCLElementTest::aCopySharesTheMembers()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'>x<LN/></IED></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    SCLElement copy(*ied);
    QCOMPARE(copy.GetTag(), QString("IED"));
    QCOMPARE(copy.GetValue(), QString("x"));
    QCOMPARE(copy.GetDocument(), document);
    QCOMPARE(copy.GetParent(""), document->Root());
    QCOMPARE(copy.GetAttributeList(), ied->GetAttributeList());
    QCOMPARE(copy.GetChildList(), ied->GetChildList());
    QCOMPARE(At(&copy, "LN")->GetParent(""), ied);
    // Assignment lets go of what both hold without deleting it, so that one of them may end.
    copy = SCLElement("LN", nullptr, nullptr);
    QCOMPARE(ElementText(&copy), QString("<LN/>"));
    QCOMPARE(ElementText(ied), QString("<IED name=\"A\">x<LN/></IED>"));
}

void SCLElementTest::destroyingAnElementReportsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    auto element = std::make_unique<SCLElement>("IED", document, nullptr);
    element->SetAttribute("name", "A", false);
    element->CreateChild("LN", -1, false)->CreateChild("DOI", -1, false);
    document->SetModified(false, false);
    const QStringList before = log.Lines();
    element.reset();
    QCOMPARE(log.Lines(), before);
    QVERIFY(!document->GetModified());
}

void SCLElementTest::destroyingAChildLeavesItInItsParent()
{
    const SCLNamePool pool;
    SCLElement parent("IED", nullptr, nullptr);
    delete parent.CreateChild("LN", -1, false);
    QCOMPARE(parent.GetChildCount(false), 1);
    // Assignment lets go of the dangling child before the parent would delete it.
    parent = SCLElement("IED", nullptr, nullptr);
    QCOMPARE(parent.GetChildCount(false), 0);
}

void SCLElementTest::setValueStoresReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val/></SCL>");
    SCLElement* val = At(document->Root(), "Val");
    const SignalLog log(document);
    val->SetValue("x", true);
    QCOMPARE(val->GetValue(), QString("x"));
    QCOMPARE(log.Lines(), QStringList({"editValue Val \"x\"", "modifiedStateChanged true"}));
    QVERIFY(document->GetModified());
}

void SCLElementTest::setValueWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    SCLElement* val = At(document->Root(), "Val");
    SignalLog log(document);
    val->SetValue("y", false);
    QCOMPARE(val->GetValue(), QString("y"));
    QCOMPARE(log.Take(), QStringList({"modifiedStateChanged true"}));
    val->SetValue("z", false);
    QCOMPARE(log.Take(), QStringList());
    QVERIFY(document->GetModified());
}

void SCLElementTest::setValueOfAModifiedDocumentSendsTheValueAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    document->SetModified(true, false);
    const SignalLog log(document);
    At(document->Root(), "Val")->SetValue("y", true);
    QCOMPARE(log.Lines(), QStringList({"editValue Val \"y\""}));
}

void SCLElementTest::anEqualValueIsNoChange()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    const SignalLog log(document);
    At(document->Root(), "Val")->SetValue("x", true);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::aNullAndAnEmptyValueAreEqual()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val/></SCL>");
    const SignalLog log(document);
    At(document->Root(), "Val")->SetValue("", true);
    At(document->Root(), "Val")->SetValue(QString(), true);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::setValueSendsBeforeItMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    QString seen;
    bool modified = true;
    connect(document, &SCLDocument::sigEditValue, this, [&](SCLElement* element) {
        seen = element->GetValue();
        modified = document->GetModified();
    });
    At(document->Root(), "Val")->SetValue("y", true);
    QCOMPARE(seen, QString("y"));
    QVERIFY(!modified);
}

void SCLElementTest::setValueWithoutADocumentStores()
{
    const SCLNamePool pool;
    SCLElement val("Val", nullptr, nullptr);
    val.SetValue("  x ", true);
    QCOMPARE(val.GetValue(), QString("  x "));
    val.SetValue("", true);
    QCOMPARE(val.GetValue(), QString(""));
}

void SCLElementTest::aMissingAttributeReadsAsEmptyAndNotNull()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("name", "A", false);
    QVERIFY(ied.GetAttribute("desc").isEmpty());
    QVERIFY(!ied.GetAttribute("desc").isNull());
    QVERIFY(!ied.GetAttribute("").isNull());
    QVERIFY(!ied.GetAttribute(QString()).isNull());
    QVERIFY(ied.FindAttribute("desc") == nullptr);
}

void SCLElementTest::findAttributeGivesTheFirstOfItsName()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttributeList({"desc", "name", "name"}, {"d", "A", "B"});
    const QList<SCLAttribute*> attributes = ied.GetAttributeList();
    QCOMPARE(ied.FindAttribute("desc"), attributes.at(0));
    QCOMPARE(ied.FindAttribute("name"), attributes.at(1));
    QCOMPARE(ied.GetAttribute("name"), QString("A"));
}

void SCLElementTest::anAttributeWithoutANameIsNeverFound()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("", "x", false);
    QCOMPARE(ied.GetAttributeList().size(), 1);
    QVERIFY(ied.FindAttribute("") == nullptr);
    QVERIFY(ied.FindAttribute(QString()) == nullptr);
    QVERIFY(ied.GetAttribute("").isEmpty());
    QVERIFY(!ied.RemoveAttribute("", false));
    QCOMPARE(ied.GetAttributeList().size(), 1);
}

void SCLElementTest::attributeNamesCompareExactly()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("name", "A", false);
    ied.SetAttribute("Name", "B", false);
    QCOMPARE(ElementText(&ied), QString("<IED name=\"A\" Name=\"B\"/>"));
    QCOMPARE(ied.GetAttribute("name"), QString("A"));
    QVERIFY(ied.FindAttribute("name ") == nullptr);
    QVERIFY(ied.FindAttribute("NAME") == nullptr);
}

void SCLElementTest::readingAttributesPoolsNothing()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.GetAttribute("name");
    ied.FindAttribute("name");
    ied.RemoveAttribute("name", true);
    QCOMPARE(int(pool.GetIdFromAtt("name")), 0);
}

void SCLElementTest::attributesKeepTheirOrder()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("type", "T", false);
    ied.SetAttribute("name", "A", false);
    ied.SetAttribute("desc", "D", false);
    QCOMPARE(ElementText(&ied), QString("<IED type=\"T\" name=\"A\" desc=\"D\"/>"));
    ied.SetAttribute("name", "B", false);
    QCOMPARE(ElementText(&ied), QString("<IED type=\"T\" name=\"B\" desc=\"D\"/>"));
    ied.RemoveAttribute("type", false);
    ied.SetAttribute("type", "U", false);
    QCOMPARE(ElementText(&ied), QString("<IED name=\"B\" desc=\"D\" type=\"U\"/>"));
}

void SCLElementTest::theAttributeListIsACopyOfPointers()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("name", "A", false);
    QList<SCLAttribute*> attributes = ied.GetAttributeList();
    QCOMPARE(attributes.size(), 1);
    QCOMPARE(attributes.first(), ied.FindAttribute("name"));
    attributes.clear();
    QCOMPARE(ElementText(&ied), QString("<IED name=\"A\"/>"));
}

void SCLElementTest::aNewAttributeIsReportedWithANullOldValue()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    const SignalLog log(document);
    QVERIFY(At(document->Root(), "IED")->SetAttribute("name", "A", true));
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED name null -> \"A\"", "modifiedStateChanged true"}));
}

void SCLElementTest::aNewAttributeWithAnEmptyValueIsAChange()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->SetAttribute("name", "", true));
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED name null -> \"\"", "modifiedStateChanged true"}));
    QCOMPARE(ElementText(ied), QString("<IED name=\"\"/>"));
}

void SCLElementTest::aChangedAttributeIsReportedWithItsOldValue()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    const SignalLog log(document);
    QVERIFY(At(document->Root(), "IED")->SetAttribute("name", "B", true));
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED name \"A\" -> \"B\"", "modifiedStateChanged true"}));
}

void SCLElementTest::anEmptyOldValueIsNotNull()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name=''/></SCL>");
    const SignalLog log(document);
    At(document->Root(), "IED")->SetAttribute("name", "B", true);
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED name \"\" -> \"B\"", "modifiedStateChanged true"}));
}

void SCLElementTest::anEqualAttributeValueIsNoChange()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' desc=''/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->SetAttribute("name", "A", true));
    QVERIFY(ied->SetAttribute("desc", "", true));
    QVERIFY(ied->SetAttribute("desc", QString(), true));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::setAttributeWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->SetAttribute("name", "B", false));
    QVERIFY(ied->SetAttribute("desc", "D", false));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
    QCOMPARE(ElementText(ied), QString("<IED name=\"B\" desc=\"D\"/>"));
}

void SCLElementTest::setAttributeSendsBeforeItMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    QStringList seen;
    connect(document, &SCLDocument::sigEditAttribute, this, [&](SCLElement* element) {
        seen.append(ElementText(element));
        seen.append(document->GetModified() ? "modified" : "not modified");
    });
    At(document->Root(), "IED")->SetAttribute("desc", "D", true);
    QCOMPARE(seen, QStringList({"<IED name=\"A\" desc=\"D\"/>", "not modified"}));
}

void SCLElementTest::theSignalNamesTheVeryAttribute()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    SCLElement* element = nullptr;
    SCLAttribute* attribute = nullptr;
    connect(document, &SCLDocument::sigEditAttribute, this, [&](SCLElement* e, SCLAttribute* a) {
        element = e;
        attribute = a;
    });
    ied->SetAttribute("name", "B", true);
    QCOMPARE(element, ied);
    QCOMPARE(attribute, ied->GetAttributeList().at(0));
    ied->SetAttribute("desc", "D", true);
    QCOMPARE(attribute, ied->GetAttributeList().at(1));
}

void SCLElementTest::setAttributeWithoutADocumentSendsNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const SignalLog log(document);
    SCLElement ied("IED", nullptr, document->Root());
    QVERIFY(ied.SetAttribute("name", "A", true));
    QVERIFY(ied.SetAttribute("name", "B", true));
    QCOMPARE(ElementText(&ied), QString("<IED name=\"B\"/>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::eachSetOfANamelessAttributeAppendsOne()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->SetAttribute("", "x", true));
    QVERIFY(ied->SetAttribute("", "x", true));
    QCOMPARE(ElementText(ied), QString("<IED name=\"A\" =\"x\" =\"x\"/>"));
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED  null -> \"x\"", "modifiedStateChanged true",
                          "editAttribute IED  null -> \"x\""}));
}

void SCLElementTest::aFullPoolRefusesANewAttributeName()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();
    FillAttributePool();
    const SignalLog log(document);
    QVERIFY(!root->SetAttribute("refused", "x", true));
    QVERIFY(!root->SetAttribute("", "x", true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());

    QVERIFY(root->SetAttribute("17", "x", true));
    QVERIFY(root->SetAttribute("17", "y", true));
    QCOMPARE(ElementText(root), QString("<SCL 17=\"y\"/>"));
}

void SCLElementTest::removeAttributeReportsAndMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' desc='D'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->RemoveAttribute("name", true));
    QCOMPARE(log.Lines(),
             QStringList({"removeAttribute IED name \"A\"", "modifiedStateChanged true"}));
    QCOMPARE(ElementText(ied), QString("<IED desc=\"D\"/>"));
}

void SCLElementTest::removeAttributeWithoutNotifyOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(ied->RemoveAttribute("name", false));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
    QCOMPARE(ElementText(ied), QString("<IED/>"));
}

void SCLElementTest::removingAMissingAttributeIsNoChange()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    QVERIFY(!ied->RemoveAttribute("desc", true));
    QVERIFY(!ied->RemoveAttribute("", true));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QCOMPARE(ElementText(ied), QString("<IED name=\"A\"/>"));
}

void SCLElementTest::aRemovedAttributeIsAliveButNoLongerListed()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' desc='D'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    SCLAttribute* name = ied->FindAttribute("name");
    QStringList seen;
    connect(document, &SCLDocument::sigRemoveAttribute, this, [&](SCLElement* e, SCLAttribute* a) {
        seen.append(a == name ? "name" : "another");
        seen.append(a->GetName() + "=" + a->GetValue());
        seen.append(ElementText(e));
        seen.append(e->FindAttribute("name") == nullptr ? "not found" : "found");
        seen.append(e->RemoveAttribute("name", true) ? "removed again" : "not removed again");
        seen.append(document->GetModified() ? "modified" : "not modified");
    });
    QVERIFY(ied->RemoveAttribute("name", true));
    QCOMPARE(seen, QStringList({"name", "name=A", "<IED desc=\"D\"/>", "not found",
                                "not removed again", "not modified"}));
}

void SCLElementTest::aRemovedAttributeIsAliveUntilTheMark()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLAttribute* removed = nullptr;
    QString seen;
    connect(document, &SCLDocument::sigRemoveAttribute, this,
            [&](SCLElement*, SCLAttribute* attribute) { removed = attribute; });
    connect(document, &SCLDocument::sigModifiedStateChanged, this,
            [&] { seen = removed->GetName() + "=" + removed->GetValue(); });
    At(document->Root(), "IED")->RemoveAttribute("name", true);
    QCOMPARE(seen, QString("name=A"));
}

void SCLElementTest::removeAttributeTakesTheFirstOfItsName()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttributeList({"name", "desc", "name"}, {"A", "D", "B"});
    QVERIFY(ied.RemoveAttribute("name", false));
    QCOMPARE(ElementText(&ied), QString("<IED desc=\"D\" name=\"B\"/>"));
    QVERIFY(ied.RemoveAttribute("name", false));
    QCOMPARE(ElementText(&ied), QString("<IED desc=\"D\"/>"));
    QVERIFY(!ied.RemoveAttribute("name", false));
}

void SCLElementTest::removeAttributeWithoutADocumentRemoves()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttribute("name", "A", true);
    QVERIFY(ied.RemoveAttribute("name", true));
    QCOMPARE(ElementText(&ied), QString("<IED/>"));
}

void SCLElementTest::setAttributeListReplacesAllAndOnlyMarks()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' type='T'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    ied->SetAttributeList({"desc", "name"}, {"D", "B"});
    QCOMPARE(ElementText(ied), QString("<IED desc=\"D\" name=\"B\"/>"));
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElementTest::setAttributeListWithoutNamesDoesNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    ied->SetAttributeList({}, {});
    QCOMPARE(ElementText(ied), QString("<IED name=\"A\"/>"));
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::setAttributeListOfUnequalListsDoesNothing_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("no names") << QStringList() << QStringList({"x"});
    QTest::newRow("no values") << QStringList({"desc"}) << QStringList();
    QTest::newRow("a value missing") << QStringList({"desc", "type"}) << QStringList({"x"});
    QTest::newRow("a name missing") << QStringList({"desc"}) << QStringList({"x", "y"});
}

void SCLElementTest::setAttributeListOfUnequalListsDoesNothing()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, values);
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    SCLAttribute* name = ied->FindAttribute("name");
    const SignalLog log(document);
    ied->SetAttributeList(names, values);
    QCOMPARE(ElementText(ied), QString("<IED name=\"A\"/>"));
    QCOMPARE(ied->FindAttribute("name"), name);
    QCOMPARE(int(SCLNamePool::Instance()->GetIdFromAtt("desc")), 0);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::setAttributeListKeepsDuplicatesAndSearchesTakeTheFirst()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttributeList({"name", "name", "", "desc"}, {"A", "B", "x", ""});
    QCOMPARE(ElementText(&ied), QString("<IED name=\"A\" name=\"B\" =\"x\" desc=\"\"/>"));
    QCOMPARE(ied.GetAttribute("name"), QString("A"));
    ied.SetAttribute("name", "C", false);
    QCOMPARE(ElementText(&ied), QString("<IED name=\"C\" name=\"B\" =\"x\" desc=\"\"/>"));
}

void SCLElementTest::setAttributeListMarksEvenWhatIsEqual()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    const SignalLog log(document);
    At(document->Root(), "IED")->SetAttributeList({"name"}, {"A"});
    QCOMPARE(log.Lines(), QStringList({"modifiedStateChanged true"}));
}

void SCLElementTest::setAttributeListWithoutADocumentReplaces()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    ied.SetAttributeList({"name"}, {"A"});
    ied.SetAttributeList({"desc"}, {"D"});
    QCOMPARE(ElementText(&ied), QString("<IED desc=\"D\"/>"));
}

void SCLElementTest::setAttributeListInAFullPoolDoesNotCrash()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    FillAttributePool();
    ied.SetAttributeList({"refused", "17"}, {"x", "y"});
    QVERIFY(ied.FindAttribute("refused") == nullptr);
    QVERIFY(ied.GetAttribute("refused").isEmpty());
    QCOMPARE(ied.GetAttribute("17"), QString("y"));
}

void SCLElementTest::setDocumentReachesTheWholeSubtreeAndSendsNothing()
{
    TestControl control;
    SCLDocument* first = control.Open("<SCL/>");
    SCLDocument* second = control.Open("<SCL/>");
    SCLElement ied("IED", nullptr, nullptr);
    SCLElement* deep = ied.CreateChild("LN", -1, false)->CreateChild("DOI", -1, false);
    SCLElement* other = ied.CreateChild("Private", -1, false);
    SignalLog log;
    log.Watch(first, "first");
    log.Watch(second, "second");

    ied.SetDocument(first);
    QCOMPARE(ied.GetDocument(), first);
    QCOMPARE(deep->GetDocument(), first);
    QCOMPARE(other->GetDocument(), first);
    ied.SetDocument(second);
    QCOMPARE(deep->GetDocument(), second);
    ied.SetDocument(nullptr);
    QVERIFY(deep->GetDocument() == nullptr);
    QVERIFY(other->GetDocument() == nullptr);

    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!first->GetModified());
    QVERIFY(!second->GetModified());
}

void SCLElementTest::setDocumentLeavesParentAndSiblingsAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/><LN/></IED></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    At(ied, "LN[1]")->SetDocument(nullptr);
    QVERIFY(At(ied, "LN[1]")->GetDocument() == nullptr);
    QCOMPARE(At(ied, "LN[0]")->GetDocument(), document);
    QCOMPARE(ied->GetDocument(), document);
    QCOMPARE(ElementText(ied), QString("<IED><LN/><LN/></IED>"));
    At(ied, "LN[1]")->SetDocument(document);
}

void SCLElementTest::setParentSetsThePointerAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED/></SCL>");
    SCLElement* root = document->Root();
    SCLElement* ln = At(root, "IED[0]/LN");
    const SignalLog log(document);
    ln->SetParent(At(root, "IED[1]"));
    QCOMPARE(ln->GetParent(""), At(root, "IED[1]"));
    QCOMPARE(ElementText(root), QString("<SCL><IED><LN/></IED><IED/></SCL>"));
    ln->SetParent(nullptr);
    QVERIFY(ln->GetParent("") == nullptr);
    QCOMPARE(At(root, "IED[0]")->GetChildPos(ln), 0);
    QCOMPARE(ln->GetDocument(), document);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElementTest::aSlotMayRemoveTheAttributeThatWasJustSet()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    connect(document, &SCLDocument::sigEditAttribute, this,
            [](SCLElement* element) { element->RemoveAttribute("name", true); });
    QVERIFY(ied->SetAttribute("name", "B", true));
    QCOMPARE(ElementText(ied), QString("<IED/>"));
    QCOMPARE(log.Lines(),
             QStringList({"editAttribute IED name \"A\" -> \"B\"", "removeAttribute IED name \"B\"",
                          "modifiedStateChanged true"}));
}

void SCLElementTest::aSlotMaySetTheAttributeThatIsBeingRemoved()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' desc='D'/></SCL>");
    SCLElement* ied = At(document->Root(), "IED");
    const SignalLog log(document);
    connect(document, &SCLDocument::sigRemoveAttribute, this,
            [](SCLElement* element) { element->SetAttribute("name", "B", true); });
    QVERIFY(ied->RemoveAttribute("name", true));
    QCOMPARE(ElementText(ied), QString("<IED desc=\"D\" name=\"B\"/>"));
    QCOMPARE(log.Lines(),
             QStringList({"removeAttribute IED name \"A\"", "editAttribute IED name null -> \"B\"",
                          "modifiedStateChanged true"}));
}

void SCLElementTest::aSlotMayRemoveTheElementWhoseAttributeWasSet()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/><IED name='A'/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigEditAttribute, this,
            [root](SCLElement* element) { root->RemoveChild(element, false); });
    QVERIFY(At(root, "IED[1]")->SetAttribute("name", "B", true));
    QVERIFY(At(root, "IED[0]")->SetAttribute("name", "B", true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(document->GetModified());
}

void SCLElementTest::aSlotMayRemoveTheElementWhoseAttributeIsRemoved()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A' desc='D'/></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigRemoveAttribute, this,
            [root](SCLElement* element) { root->RemoveChild(element, false); });
    QVERIFY(At(root, "IED")->RemoveAttribute("name", true));
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(document->GetModified());
}

void SCLElementTest::aSlotMayRemoveTheElementWhoseValueWasSet()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    SCLElement* root = document->Root();
    connect(document, &SCLDocument::sigEditValue, this,
            [root](SCLElement* element) { root->RemoveChild(element, false); });
    At(root, "Val")->SetValue("y", true);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
    QVERIFY(document->GetModified());
}

void SCLElementTest::aSlotMaySetTheValueAgain()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Val>x</Val></SCL>");
    const SignalLog log(document);
    connect(document, &SCLDocument::sigEditValue, this,
            [](SCLElement* element) { element->SetValue("z", true); });
    At(document->Root(), "Val")->SetValue("y", true);
    QCOMPARE(At(document->Root(), "Val")->GetValue(), QString("z"));
    QCOMPARE(log.Lines(), QStringList({"editValue Val \"y\"", "editValue Val \"z\"",
                                       "modifiedStateChanged true"}));
}

void SCLElementTest::twentyThousandAttributesOnOneElement()
{
    const SCLNamePool pool;
    SCLElement ied("IED", nullptr, nullptr);
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i)
        ied.SetAttribute(QStringLiteral("a%1").arg(i), QString::number(i), false);
    const QList<SCLAttribute*> attributes = ied.GetAttributeList();
    QCOMPARE(int(attributes.size()), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(attributes.at(i)->GetValue(), QString::number(i));
    QCOMPARE(ied.GetAttribute("a19999"), QString("19999"));

    const std::unique_ptr<SCLElement> clone(ied.Clone(false));
    QCOMPARE(AttributesText(clone.get()), AttributesText(&ied));
    for (int i = 0; i < count; i += 2)
        QVERIFY(ied.RemoveAttribute(QStringLiteral("a%1").arg(i), false));
    QCOMPARE(int(ied.GetAttributeList().size()), count / 2);
    QCOMPARE(ied.GetAttributeList().first()->GetName(), QString("a1"));
}

QTEST_MAIN(SCLElementTest)
#include "SCLElementTest.moc"
