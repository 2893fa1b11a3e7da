// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QObject>
#include <QTest>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

namespace
{

using Criterion = QMap<QString, QString>;
using Elements = QList<SCLElement*>;

constexpr int g_depth = 1000000;

// The searches once more, as plain recursions over the lists of children and attributes: slow, and
// simple enough to be believed.
namespace Plain
{

Elements Children(SCLElement* element)
{
    Elements children = element->GetChildList();
    const SCLNamePool* pool = SCLNamePool::Instance();
    std::stable_sort(
        children.begin(), children.end(), [pool](const SCLElement* left, const SCLElement* right) {
            return pool->GetIdFromTag(left->GetTag()) < pool->GetIdFromTag(right->GetTag());
        });
    return children;
}

Elements ChildrenOf(SCLElement* element, const QString& tag)
{
    Elements matches;
    const Elements children = Children(element);
    for (SCLElement* child : children) {
        if (child->GetTag() == tag)
            matches.append(child);
    }
    return matches;
}

QString Value(SCLElement* element, const QString& name)
{
    const QList<SCLAttribute*> attributes = element->GetAttributeList();
    for (const SCLAttribute* attribute : attributes) {
        if (!name.isEmpty() && attribute->GetName() == name)
            return attribute->GetValue();
    }
    return QString();
}

bool Matches(SCLElement* element, const Criterion& criterion)
{
    const QStringList names = criterion.keys();
    for (const QString& name : names) {
        if (Value(element, name) != criterion.value(name))
            return false;
    }
    return true;
}

SCLElement* Find(SCLElement* element, const QString& tag, const Criterion& criterion,
                 bool recursive)
{
    const Elements direct = ChildrenOf(element, tag);
    for (SCLElement* child : direct) {
        if (Matches(child, criterion))
            return child;
    }
    if (!recursive)
        return nullptr;
    const Elements children = Children(element);
    for (SCLElement* child : children) {
        if (SCLElement* match = Find(child, tag, criterion, true))
            return match;
    }
    return nullptr;
}

SCLElement* Find(SCLElement* element, const Criterion& criterion)
{
    const Elements children = Children(element);
    for (SCLElement* child : children) {
        if (Matches(child, criterion))
            return child;
    }
    return nullptr;
}

SCLElement* FindLogicalNode(SCLElement* element, const QString& name)
{
    const Elements zeros = ChildrenOf(element, "LN0");
    for (SCLElement* ln : zeros) {
        if (name == Value(ln, "lnClass") + Value(ln, "inst"))
            return ln;
    }
    const Elements nodes = ChildrenOf(element, "LN");
    for (SCLElement* ln : nodes) {
        if (name == Value(ln, "prefix") + Value(ln, "lnClass") + Value(ln, "inst"))
            return ln;
    }
    return nullptr;
}

Elements FindByType(SCLElement* element, const QString& tag)
{
    Elements matches = ChildrenOf(element, tag);
    const Elements children = Children(element);
    for (SCLElement* child : children)
        matches += FindByType(child, tag);
    return matches;
}

Elements All(SCLElement* element)
{
    Elements all{element};
    const Elements children = Children(element);
    for (SCLElement* child : children)
        all += All(child);
    return all;
}

SCLElement* Ancestor(SCLElement* element, const QString& tag)
{
    SCLElement* parent = element->GetParent("");
    if (parent == nullptr || parent->GetTag() == tag)
        return parent;
    return Ancestor(parent, tag);
}

} // namespace Plain

// Small random trees with few tags, names and values, so that everything collides with everything.
class RandomTrees
{
public:
    explicit RandomTrees(unsigned int seed) : m_random(seed) {}

    std::unique_ptr<SCLElement> Tree()
    {
        auto top = std::make_unique<SCLElement>(Tag(), nullptr, nullptr);
        Elements all{top.get()};
        for (int size = UpTo(24); size > 0; --size) {
            auto* child = new SCLElement(Tag(), nullptr, nullptr);
            GiveAttributes(child);
            all.at(UpTo(static_cast<int>(all.size())))->AttachChild(child, UpTo(2) - 1, false);
            all.append(child);
        }
        return top;
    }

    QString Tag()
    {
        static const char* const tags[] = {"LN", "LN0", "DOI", "P", "LN", ""};
        return tags[UpTo(6)];
    }
    QString Name()
    {
        static const char* const names[] = {"prefix", "lnClass", "inst", "desc", ""};
        return names[UpTo(5)];
    }
    QString Value()
    {
        static const char* const values[] = {"", "1", "2", "XCBR", "X", "CBR1"};
        return values[UpTo(6)];
    }
    Criterion SomeCriterion()
    {
        Criterion criterion;
        for (int i = UpTo(3); i > 0; --i)
            criterion.insert(UpTo(20) == 0 ? QStringLiteral("unknown") : Name(), Value());
        return criterion;
    }
    int UpTo(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

private:
    void GiveAttributes(SCLElement* element)
    {
        QStringList names;
        QStringList values;
        for (int i = UpTo(5); i > 0; --i) {
            names.append(Name());
            values.append(Value());
        }
        element->SetAttributeList(names, values);
    }

    std::mt19937 m_random;
};

} // namespace

class SCLElement_SearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void getParentWithoutATagGivesTheDirectParent();
    void getParentGivesTheNearestOfTheTag();
    void getParentDoesNotTestTheElementItself();
    void getParentOfAnotherTagIsNull();

    void getFirstChildGivesTheFirstOfTheTag();
    void getFirstChildWithoutOneIsNull_data();
    void getFirstChildWithoutOneIsNull();

    void findChildByPosition_data();
    void findChildByPosition();
    void positionZeroIsTheFirstChild();

    void logicalNodesAreFoundByTheirShortName_data();
    void logicalNodesAreFoundByTheirShortName();
    void anLN0WinsOverAnLNOfTheSameText();
    void theFirstOfEqualLogicalNodesWins();
    void anEmptyNameFindsALogicalNodeWithoutAttributes();
    void logicalNodesBelowChildrenAreNotFound();

    void findChildByAttributesGivesTheFirstMatch_data();
    void findChildByAttributesGivesTheFirstMatch();
    void anEmptyCriterionMatchesAll();
    void anEmptyValueMatchesAMissingAttribute();
    void anAttributeWithoutANameMatchesNothing();
    void aCriterionReadsTheFirstOfDuplicateAttributes();
    void valuesCompareExactly();

    void directChildrenComeBeforeGrandchildren();
    void descentIsDepthFirstInAscendingTagIds();
    void theElementItselfIsNeverTested();
    void anUnknownTagFindsNothing();
    void theEmptyTagIsLookedUpLikeAnyOther();

    void findChildOfAnyTagTakesTheSmallerId();
    void findChildOfAnyTagDoesNotDescend();
    void findChildOfAnyTagWithAnEmptyCriterionGivesTheFirstChild();

    void findChildByTypeGivesDirectChildrenInOrder();
    void findChildByTypeRecursiveOrder();
    void findChildByTypeFindsNestedElementsOfTheTag();
    void findChildByTypeOfAnUnknownTagIsEmpty();
    void theListOfFindChildByTypeIsACopy();

    void searchesPoolNothingAndReportNothing();
    void anElementWithoutATagIdIsFoundByNoSearch();

    void searchesAgreeWithAPlainRecursion_data();
    void searchesAgreeWithAPlainRecursion();

    void aMillionLevelsAreSearched();
};

void SCLElement_SearchTest::getParentWithoutATagGivesTheDirectParent()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN/></IED></SCL>");
    QCOMPARE(At(root, "IED/LN")->GetParent(""), At(root, "IED"));
    QCOMPARE(At(root, "IED/LN")->GetParent(QString()), At(root, "IED"));
    QVERIFY(root->GetParent("") == nullptr);
}

void SCLElement_SearchTest::getParentGivesTheNearestOfTheTag()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><SDI><P><SDI><DAI/></SDI></P></SDI></SCL>");
    SCLElement* dai = At(root, "SDI/P/SDI/DAI");
    QCOMPARE(dai->GetParent("SDI"), At(root, "SDI/P/SDI"));
    QCOMPARE(dai->GetParent("P"), At(root, "SDI/P"));
    QCOMPARE(dai->GetParent("SCL"), root);
}

void SCLElement_SearchTest::getParentDoesNotTestTheElementItself()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><SDI><SDI/></SDI></SCL>");
    QVERIFY(root->GetParent("SCL") == nullptr);
    QCOMPARE(At(root, "SDI/SDI")->GetParent("SDI"), At(root, "SDI"));
    QVERIFY(At(root, "SDI")->GetParent("SDI") == nullptr);
}

void SCLElement_SearchTest::getParentOfAnotherTagIsNull()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN/></IED><P/></SCL>");
    SCLElement* ln = At(root, "IED/LN");
    QVERIFY(ln->GetParent("P") == nullptr);
    QVERIFY(ln->GetParent("DOI") == nullptr);
    QVERIFY(ln->GetParent("scl") == nullptr);
    QVERIFY(ln->GetParent("IED ") == nullptr);
}

void SCLElement_SearchTest::getFirstChildGivesTheFirstOfTheTag()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><P/><LN n='1'/><LN n='2'/></SCL>");
    QCOMPARE(ElementText(root->GetFirstChild("LN")), QString("<LN n=\"1\"/>"));
}

void SCLElement_SearchTest::getFirstChildWithoutOneIsNull_data()
{
    QTest::addColumn<QString>("tag");
    QTest::newRow("unknown tag") << "Unknown";
    QTest::newRow("tag without a group") << "DOI";
    QTest::newRow("empty group") << "Empty";
    QTest::newRow("another case") << "ln";
    QTest::newRow("empty tag") << "";
}

void SCLElement_SearchTest::getFirstChildWithoutOneIsNull()
{
    QFETCH(QString, tag);
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN><DOI/></LN><Empty/></SCL>");
    root->RemoveChild(At(root, "Empty"), false);
    QVERIFY(root->GetFirstChild(tag) == nullptr);
    QVERIFY(root->FindChild(tag, 0) == nullptr);
    QVERIFY(root->FindChild(tag, Criterion(), false) == nullptr);
    QVERIFY(root->FindChildByType(tag, false).isEmpty());
}

void SCLElement_SearchTest::findChildByPosition_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first") << 0 << "<LN n=\"1\"/>";
    QTest::newRow("last") << 2 << "<LN n=\"3\"/>";
    QTest::newRow("behind the last") << 3 << "null";
    QTest::newRow("negative") << -1 << "null";
    QTest::newRow("most") << std::numeric_limits<int>::max() << "null";
    QTest::newRow("least") << std::numeric_limits<int>::min() << "null";
}

void SCLElement_SearchTest::findChildByPosition()
{
    QFETCH(int, index);
    QFETCH(QString, expected);
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><LN n='1'/><P/><LN n='2'/><LN n='3'/><P/><P/><P/></SCL>");
    QCOMPARE(ElementText(root->FindChild("LN", index)), expected);
}

void SCLElement_SearchTest::positionZeroIsTheFirstChild()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><P/><LN/><LN/></SCL>");
    QCOMPARE(root->FindChild("LN", 0), root->GetFirstChild("LN"));
    QCOMPARE(root->FindChild("P", 0), root->GetFirstChild("P"));
}

void SCLElement_SearchTest::logicalNodesAreFoundByTheirShortName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("LN0") << "LLN0"
                         << "zero";
    QTest::newRow("LN0 with an instance") << "LLN07"
                                          << "seven";
    QTest::newRow("prefix of an LN0 is ignored") << "pLLN0"
                                                 << "";
    QTest::newRow("LN by class and instance") << "XCBR2"
                                              << "second";
    QTest::newRow("LN with a prefix") << "Q0XCBR1"
                                      << "prefixed";
    QTest::newRow("LN without an instance") << "LPHD"
                                            << "bare";
    QTest::newRow("class alone") << "XCBR"
                                 << "";
    QTest::newRow("another case") << "xcbr2"
                                  << "";
    QTest::newRow("with blanks") << "XCBR 2"
                                 << "";
    QTest::newRow("tag other than LN") << "GGIO1"
                                       << "";
    QTest::newRow("empty") << ""
                           << "";
}

void SCLElement_SearchTest::logicalNodesAreFoundByTheirShortName()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    TestControl control;
    SCLElement* device =
        control.OpenRoot("<SCL>"
                         "<LN desc='first' lnClass='XCBR' inst='1'/>"
                         "<LN0 desc='zero' prefix='p' lnClass='LLN0' inst=''/>"
                         "<LN0 desc='seven' lnClass='LLN0' inst='7'/>"
                         "<LN desc='second' lnClass='XCBR' inst='2'/>"
                         "<LN desc='prefixed' prefix='Q0' lnClass='XCBR' inst='1'/>"
                         "<LN desc='bare' lnClass='LPHD'/>"
                         "<Other desc='other' lnClass='GGIO' inst='1'/>"
                         "</SCL>");
    SCLElement* found = device->FindChild(name);
    QCOMPARE(found == nullptr ? QString("") : found->GetAttribute("desc"), expected);
}

void SCLElement_SearchTest::anLN0WinsOverAnLNOfTheSameText()
{
    TestControl control;
    SCLElement* device =
        control.OpenRoot("<SCL><LN lnClass='LLN0' inst=''/><LN0 lnClass='LLN0' inst=''/></SCL>");
    QCOMPARE(device->FindChild("LLN0"), At(device, "LN0"));
}

void SCLElement_SearchTest::theFirstOfEqualLogicalNodesWins()
{
    TestControl control;
    SCLElement* device = control.OpenRoot("<SCL>"
                                          "<LN n='1' lnClass='XCBR' inst='12'/>"
                                          "<LN n='2' prefix='X' lnClass='CBR1' inst='2'/>"
                                          "<LN n='3' prefix='XCBR12'/>"
                                          "</SCL>");
    QCOMPARE(device->FindChild("XCBR12"), At(device, "LN[0]"));
    device->MoveChild("LN", 0, 2, false);
    QCOMPARE(device->FindChild("XCBR12")->GetAttribute("n"), QString("2"));
}

void SCLElement_SearchTest::anEmptyNameFindsALogicalNodeWithoutAttributes()
{
    TestControl control;
    SCLElement* device = control.OpenRoot("<SCL><LN inst='1'/><LN desc='d'/></SCL>");
    QCOMPARE(device->FindChild(QString("")), At(device, "LN[1]"));
    QCOMPARE(device->FindChild(QString()), At(device, "LN[1]"));
}

void SCLElement_SearchTest::logicalNodesBelowChildrenAreNotFound()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LDevice><LN0 lnClass='LLN0'/></LDevice></SCL>");
    QVERIFY(root->FindChild("LLN0") == nullptr);
    QCOMPARE(At(root, "LDevice")->FindChild("LLN0"), At(root, "LDevice/LN0"));
}

void SCLElement_SearchTest::findChildByAttributesGivesTheFirstMatch_data()
{
    QTest::addColumn<QStringList>("criterion");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one name") << QStringList({"lnClass", "XCBR"}) << "1";
    QTest::newRow("two names") << QStringList({"lnClass", "XCBR", "inst", "2"}) << "3";
    QTest::newRow("one of two differs") << QStringList({"lnClass", "XCBR", "inst", "9"}) << "";
    QTest::newRow("other tags do not count") << QStringList({"lnClass", "MMXU"}) << "";
    QTest::newRow("unknown name") << QStringList({"unknown", "x"}) << "";
    QTest::newRow("unknown name, empty value") << QStringList({"unknown", ""}) << "1";
    QTest::newRow("missing attribute") << QStringList({"lnClass", "XCBR", "prefix", ""}) << "3";
}

void SCLElement_SearchTest::findChildByAttributesGivesTheFirstMatch()
{
    QFETCH(QStringList, criterion);
    QFETCH(QString, expected);
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>"
                                        "<LN n='1' prefix='Q' lnClass='XCBR' inst='1'/>"
                                        "<P lnClass='MMXU' inst='1'/>"
                                        "<LN n='2' lnClass='CSWI' inst='2'/>"
                                        "<LN n='3' lnClass='XCBR' inst='2'/>"
                                        "</SCL>");
    Criterion attributes;
    for (int i = 0; i < criterion.size(); i += 2)
        attributes.insert(criterion.at(i), criterion.at(i + 1));
    SCLElement* found = root->FindChild("LN", attributes, false);
    QCOMPARE(found == nullptr ? QString("") : found->GetAttribute("n"), expected);
    if (attributes.size() == 1) {
        QCOMPARE(root->FindChild("LN", criterion.at(0), criterion.at(1), false), found);
        QCOMPARE(root->FindChild("LN", criterion.at(0), criterion.at(1), true), found);
    }
}

void SCLElement_SearchTest::anEmptyCriterionMatchesAll()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><P/><LN n='1'/><LN/><DOI><DAI/></DOI></SCL>");
    QCOMPARE(root->FindChild("LN", Criterion(), false), At(root, "LN[0]"));
    QVERIFY(root->FindChild("DAI", Criterion(), false) == nullptr);
    QCOMPARE(root->FindChild("DAI", Criterion(), true), At(root, "DOI/DAI"));
}

void SCLElement_SearchTest::anEmptyValueMatchesAMissingAttribute()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN inst='1'/><LN/><LN inst=''/></SCL>");
    QCOMPARE(root->FindChild("LN", "inst", "", false), At(root, "LN[1]"));
    QCOMPARE(root->FindChild("LN", "inst", QString(), false), At(root, "LN[1]"));
    root->RemoveChild(At(root, "LN[1]"), false);
    QCOMPARE(root->FindChild("LN", "inst", "", false), At(root, "LN[1]"));
    QCOMPARE(root->FindChild("inst", ""), At(root, "LN[1]"));
}

void SCLElement_SearchTest::anAttributeWithoutANameMatchesNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN/></SCL>");
    At(root, "LN")->SetAttribute("", "x", false);
    QVERIFY(root->FindChild("LN", "", "x", true) == nullptr);
    QVERIFY(root->FindChild("", "x") == nullptr);
    QCOMPARE(root->FindChild("LN", "", "", true), At(root, "LN"));
    QCOMPARE(root->FindChild("", ""), At(root, "LN"));
}

void SCLElement_SearchTest::aCriterionReadsTheFirstOfDuplicateAttributes()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN/></SCL>");
    At(root, "LN")->SetAttributeList({"inst", "inst"}, {"1", "2"});
    QCOMPARE(root->FindChild("LN", "inst", "1", false), At(root, "LN"));
    QVERIFY(root->FindChild("LN", "inst", "2", false) == nullptr);
}

void SCLElement_SearchTest::valuesCompareExactly()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN inst='A1'/></SCL>");
    for (const char* value : {"a1", "A1 ", " A1", "A", "A11"})
        QVERIFY(root->FindChild("LN", "inst", value, true) == nullptr);
    QVERIFY(root->FindChild("LN", "Inst", "A1", true) == nullptr);
    QVERIFY(root->FindChild("ln", "inst", "A1", true) == nullptr);
    QCOMPARE(root->FindChild("LN", "inst", "A1", true), At(root, "LN"));
}

void SCLElement_SearchTest::directChildrenComeBeforeGrandchildren()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL><LN n='1'><LN n='2' a='x'/></LN><LN n='3' a='y'/><LN n='4' a='x'/></SCL>");
    QCOMPARE(root->FindChild("LN", Criterion{{"a", "x"}}, true), At(root, "LN[2]"));
    QCOMPARE(root->FindChild("LN", "a", "x", true), At(root, "LN[2]"));
    root->RemoveChild(At(root, "LN[2]"), false);
    QVERIFY(root->FindChild("LN", "a", "x", false) == nullptr);
    QCOMPARE(root->FindChild("LN", "a", "x", true), At(root, "LN[0]/LN"));
}

void SCLElement_SearchTest::descentIsDepthFirstInAscendingTagIds()
{
    TestControl control;
    // A is met before B, so the whole subtree of an A comes before that of a B above it.
    SCLElement* root = control.OpenRoot("<SCL><!-- A, B --><A/>"
                                        "<B><T n='shallow'/></B>"
                                        "<A><A><A><T n='deep'/></A></A></A>"
                                        "</SCL>");
    QCOMPARE(root->FindChild("T", Criterion(), true)->GetAttribute("n"), QString("deep"));
    QCOMPARE(ElementTexts(root->FindChildByType("T", true)),
             QStringList({"<T n=\"deep\"/>", "<T n=\"shallow\"/>"}));
}

void SCLElement_SearchTest::theElementItselfIsNeverTested()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL n='1'><P/></SCL>");
    QVERIFY(root->FindChild("SCL", "n", "1", true) == nullptr);
    QVERIFY(root->FindChild("SCL", Criterion(), true) == nullptr);
    QVERIFY(root->FindChildByType("SCL", true).isEmpty());
    QVERIFY(root->FindChild("n", "1") == nullptr);
}

void SCLElement_SearchTest::anUnknownTagFindsNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN n='1'/></SCL>");
    QVERIFY(root->FindChild("Unknown", Criterion(), true) == nullptr);
    QVERIFY(root->FindChild("Unknown", "n", "1", true) == nullptr);
    QVERIFY(root->FindChild("Unknown", 0) == nullptr);
}

void SCLElement_SearchTest::theEmptyTagIsLookedUpLikeAnyOther()
{
    const SCLNamePool pool;
    SCLElement root("SCL", nullptr, nullptr);
    auto* nameless = new SCLElement("", nullptr, nullptr);
    nameless->SetAttribute("n", "1", false);
    QVERIFY(root.AttachChild(nameless, -1, false));
    QCOMPARE(root.GetFirstChild(""), nameless);
    QCOMPARE(root.FindChild("", 0), nameless);
    QCOMPARE(root.FindChild("", "n", "1", true), nameless);
    QCOMPARE(root.FindChildByType("", true), Elements({nameless}));
    SCLElement* below = nameless->CreateChild("LN", -1, false);
    // An empty tag asks for the parent there, whatever its tag is.
    QCOMPARE(below->GetParent(""), nameless);
}

void SCLElement_SearchTest::findChildOfAnyTagTakesTheSmallerId()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><First/><Second inst='1'/><First inst='1'/></SCL>");
    QCOMPARE(root->FindChild("inst", "1"), At(root, "First[1]"));
    QCOMPARE(root->FindChild(Criterion{{"inst", "1"}}), At(root, "First[1]"));
    At(root, "First[1]")->SetAttribute("inst", "2", false);
    QCOMPARE(root->FindChild("inst", "1"), At(root, "Second"));
    QVERIFY(root->FindChild("inst", "3") == nullptr);
}

void SCLElement_SearchTest::findChildOfAnyTagDoesNotDescend()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN inst='1'/></IED></SCL>");
    QVERIFY(root->FindChild("inst", "1") == nullptr);
    QVERIFY(root->FindChild(Criterion{{"inst", "1"}}) == nullptr);
}

void SCLElement_SearchTest::findChildOfAnyTagWithAnEmptyCriterionGivesTheFirstChild()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><Gone/><B/><A/></SCL>");
    root->RemoveChild(At(root, "Gone"), false);
    QCOMPARE(root->FindChild(Criterion()), At(root, "B"));
    QVERIFY(At(root, "B")->FindChild(Criterion()) == nullptr);
}

void SCLElement_SearchTest::findChildByTypeGivesDirectChildrenInOrder()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><LN n='1'><LN n='2'/></LN><P><LN n='3'/></P><LN n='4'/></SCL>");
    QCOMPARE(root->FindChildByType("LN", false), Elements({At(root, "LN[0]"), At(root, "LN[1]")}));
}

void SCLElement_SearchTest::findChildByTypeRecursiveOrder()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>"
                                        "<A><LN n='3'/><B><LN n='5'/></B><LN n='4'/></A>"
                                        "<LN n='1'><A><LN n='7'/></A></LN>"
                                        "<A><LN n='6'/></A>"
                                        "<B><LN n='8'/></B>"
                                        "<LN n='2'/>"
                                        "</SCL>");
    QStringList order;
    const Elements found = root->FindChildByType("LN", true);
    for (SCLElement* ln : found)
        order.append(ln->GetAttribute("n"));
    QCOMPARE(order, QStringList({"1", "2", "3", "4", "5", "6", "7", "8"}));
}

void SCLElement_SearchTest::findChildByTypeFindsNestedElementsOfTheTag()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><S n='1'><S n='3'><S n='4'/></S></S><S n='2'/></SCL>");
    QStringList order;
    const Elements found = root->FindChildByType("S", true);
    for (SCLElement* s : found)
        order.append(s->GetAttribute("n"));
    QCOMPARE(order, QStringList({"1", "2", "3", "4"}));
}

void SCLElement_SearchTest::findChildByTypeOfAnUnknownTagIsEmpty()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN/></SCL>");
    QVERIFY(root->FindChildByType("Unknown", true).isEmpty());
    QVERIFY(root->FindChildByType("Unknown", false).isEmpty());
    QVERIFY(root->FindChildByType("ln", true).isEmpty());
    QVERIFY(root->FindChildByType("", true).isEmpty());
}

void SCLElement_SearchTest::theListOfFindChildByTypeIsACopy()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><LN/><LN/></SCL>");
    Elements found = root->FindChildByType("LN", false);
    found.clear();
    QCOMPARE(root->GetChildCount(false), 2);
    const Elements walked = root->FindChildByType("LN", false);
    for (SCLElement* ln : walked)
        QVERIFY(root->RemoveChild(ln, false));
    QCOMPARE(walked.size(), 2);
    QCOMPARE(ElementText(root), QString("<SCL/>"));
}

void SCLElement_SearchTest::searchesPoolNothingAndReportNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED name='A'/></SCL>");
    SCLElement* root = document->Root();
    const SCLNamePool* pool = SCLNamePool::Instance();
    const SignalLog log(document);
    root->GetParent("New");
    root->GetFirstChild("New");
    root->FindChild("New", 0);
    root->FindChild("New");
    root->FindChild("New", Criterion{{"new", "x"}}, true);
    root->FindChild("IED", "new", "x", true);
    root->FindChild(Criterion{{"new", "x"}});
    root->FindChild("new", "");
    root->FindChildByType("New", true);
    QCOMPARE(int(pool->GetLastTagId()), 2);
    for (const char* name : {"New", "LN", "LN0", ""})
        QCOMPARE(int(pool->GetIdFromTag(name)), 0);
    for (const char* name : {"new", "prefix", "lnClass", "inst", ""})
        QCOMPARE(int(pool->GetIdFromAtt(name)), 0);
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
}

void SCLElement_SearchTest::anElementWithoutATagIdIsFoundByNoSearch()
{
    SCLNamePool pool;
    SCLElement root("SCL", nullptr, nullptr);
    for (int i = 0; i < 65535; ++i)
        pool.AddTagToNamePool(QString::number(i));
    auto refused = std::make_unique<SCLElement>("refused", nullptr, nullptr);
    QVERIFY(refused->GetTag().isNull());
    if (root.AttachChild(refused.get(), -1, false))
        static_cast<void>(refused.release());
    QVERIFY(root.GetFirstChild("refused") == nullptr);
    QVERIFY(root.GetFirstChild("unknown") == nullptr);
    QVERIFY(root.FindChildByType("unknown", true).isEmpty());
    QVERIFY(!root.MoveChild("unknown", 0, 1, false));
}

void SCLElement_SearchTest::searchesAgreeWithAPlainRecursion_data()
{
    QTest::addColumn<unsigned int>("seed");
    for (unsigned int seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void SCLElement_SearchTest::searchesAgreeWithAPlainRecursion()
{
    QFETCH(unsigned int, seed);
    RandomTrees random(seed);
    const SCLNamePool pool;
    for (int tree = 0; tree < 400; ++tree) {
        const std::unique_ptr<SCLElement> top = random.Tree();
        const Elements all = Plain::All(top.get());
        QCOMPARE(top->GetChildCount(true), int(all.size()) - 1);
        for (int query = 0; query < 10; ++query) {
            SCLElement* element = all.at(random.UpTo(static_cast<int>(all.size())));
            const QString tag = random.Tag();
            const QString name = random.Name();
            const QString value = random.Value();
            const Criterion criterion = random.SomeCriterion();
            const Elements direct = Plain::ChildrenOf(element, tag);
            const int index = random.UpTo(6) - 1;

            QCOMPARE(element->GetChildList(), Plain::Children(element));
            QCOMPARE(element->FindChildByType(tag, false), direct);
            QCOMPARE(element->FindChildByType(tag, true), Plain::FindByType(element, tag));
            QCOMPARE(element->GetFirstChild(tag), direct.value(0));
            QCOMPARE(element->FindChild(tag, index), direct.value(index));
            for (bool recursive : {false, true}) {
                QCOMPARE(element->FindChild(tag, criterion, recursive),
                         Plain::Find(element, tag, criterion, recursive));
                QCOMPARE(element->FindChild(tag, name, value, recursive),
                         Plain::Find(element, tag, {{name, value}}, recursive));
            }
            QCOMPARE(element->FindChild(criterion), Plain::Find(element, criterion));
            QCOMPARE(element->FindChild(name, value), Plain::Find(element, {{name, value}}));
            const QString lnName = value + random.Value();
            QCOMPARE(element->FindChild(lnName), Plain::FindLogicalNode(element, lnName));
            if (!tag.isEmpty())
                QCOMPARE(element->GetParent(tag), Plain::Ancestor(element, tag));
        }
    }
}

void SCLElement_SearchTest::aMillionLevelsAreSearched()
{
    const SCLNamePool pool;
    SCLElement root("SCL", nullptr, nullptr);
    const QString tag = QStringLiteral("N");
    Elements chain;
    chain.reserve(g_depth);
    SCLElement* lowest = &root;
    for (int i = 0; i < g_depth; ++i) {
        lowest = lowest->CreateChild(tag, -1, false);
        chain.append(lowest);
    }
    lowest->SetAttribute("inst", "1", false);

    QVERIFY(root.FindChildByType("N", true) == chain);
    QCOMPARE(root.FindChild("N", Criterion{{"inst", "1"}}, true), lowest);
    QCOMPARE(root.FindChild("N", "inst", "1", true), lowest);
    QVERIFY(root.FindChild("N", "inst", "2", true) == nullptr);
    QVERIFY(root.FindChild("Unknown", Criterion(), true) == nullptr);
    QCOMPARE(lowest->GetParent("SCL"), &root);
    QVERIFY(lowest->GetParent("Unknown") == nullptr);
}

QTEST_MAIN(SCLElement_SearchTest)
#include "SCLElement_SearchTest.moc"
