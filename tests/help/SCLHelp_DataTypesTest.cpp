// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TemplateTree.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

#include <QObject>
#include <QTest>

#include <memory>
#include <vector>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Elements = QList<SCLElement*>;
using Lookup = SCLElement* (*)(SCLElement*);

struct Reference {
    const char* name;
    Lookup lookup;
    const char* attribute;
    const char* typeTag;
};

const std::vector<Reference>& References()
{
    static const std::vector<Reference> references{
        {"GetLNTypeFromLN", &SCLHelp::GetLNTypeFromLN, "lnType", "LNodeType"},
        {"GetDOTypeFromDO", &SCLHelp::GetDOTypeFromDO, "type", "DOType"},
        {"GetDATypeFromDA", &SCLHelp::GetDATypeFromDA, "type", "DAType"},
        {"GetEnumTypeFromDA", &SCLHelp::GetEnumTypeFromDA, "type", "EnumType"},
    };
    return references;
}

void ReferenceRows()
{
    QTest::addColumn<int>("reference");
    for (std::size_t i = 0; i < References().size(); ++i)
        QTest::newRow(References()[i].name) << static_cast<int>(i);
}

const Reference& FetchedReference()
{
    QFETCH(int, reference);
    return References()[static_cast<std::size_t>(reference)];
}

// One of each kind of type for each of the ids; the note tells equal ones apart.
QByteArray AllTypes(const QList<QByteArray>& idAndNotes)
{
    QByteArray types;
    for (const char* tag : {"EnumType", "DAType", "DOType", "LNodeType"}) {
        for (const QByteArray& attributes : idAndNotes)
            types += QByteArray("<") + tag + " " + attributes + "/>";
    }
    return types;
}

SCLElement* Referring(SCLElement* root, const char* attribute, const QString& id)
{
    return AddChild(AddChild(root, "Private"), "Any", {QString::fromLatin1(attribute), id});
}

} // namespace

// The closures once more: the rules as plain recursions over plain loops.
namespace Corvane::Test::Plain
{

namespace
{

bool AddNew(SCLElement* type, Elements& known)
{
    if (type == nullptr || known.contains(type))
        return false;
    known.append(type);
    return true;
}

void ReferredDOTypes(const Elements& doTypes, Elements& referred)
{
    for (SCLElement* doType : Elements(doTypes)) {
        Elements fresh;
        const Elements sdos = ChildrenOf(doType, "SDO");
        for (SCLElement* sdo : sdos) {
            SCLElement* type = TypeOf(sdo, "type", "DOType");
            if (AddNew(type, referred))
                fresh.append(type);
        }
        ReferredDOTypes(fresh, referred);
    }
}

void AddAttributeType(SCLElement* da, Elements& daTypes, Elements& enumTypes, Elements& fresh)
{
    if (da->GetAttribute("bType") == "Struct") {
        SCLElement* type = TypeOf(da, "type", "DAType");
        if (AddNew(type, daTypes))
            fresh.append(type);
    } else if (da->GetAttribute("bType") == "Enum") {
        AddNew(TypeOf(da, "type", "EnumType"), enumTypes);
    }
}

void ReferredAttributeTypes(const Elements& daTypes, Elements& referred, Elements& enumTypes)
{
    for (SCLElement* daType : Elements(daTypes)) {
        Elements fresh;
        const Elements bdas = ChildrenOf(daType, "BDA");
        for (SCLElement* bda : bdas)
            AddAttributeType(bda, referred, enumTypes, fresh);
        ReferredAttributeTypes(fresh, referred, enumTypes);
    }
}

Elements Nodes(SCLElement* ied)
{
    Elements nodes;
    const Elements accessPoints = ChildrenOf(ied, "AccessPoint");
    for (SCLElement* accessPoint : accessPoints) {
        const Elements servers = ChildrenOf(accessPoint, "Server");
        const Elements lDevices =
            servers.isEmpty() ? Elements() : ChildrenOf(servers.first(), "LDevice");
        for (SCLElement* lDevice : lDevices)
            nodes += ChildrenOf(lDevice, "LN0").mid(0, 1) + ChildrenOf(lDevice, "LN");
    }
    return nodes;
}

struct Used {
    Elements lnTypes;
    Elements doTypes;
    Elements daTypes;
    Elements enumTypes;
};

void AddUsed(const Elements& ieds, Used& used)
{
    for (SCLElement* ied : ieds) {
        const Elements nodes = Nodes(ied);
        for (SCLElement* node : nodes)
            AddNew(TypeOf(node, "lnType", "LNodeType"), used.lnTypes);
    }
    for (SCLElement* lnType : Elements(used.lnTypes)) {
        const Elements dataObjects = ChildrenOf(lnType, "DO");
        for (SCLElement* dataObject : dataObjects)
            AddNew(TypeOf(dataObject, "type", "DOType"), used.doTypes);
    }
    ReferredDOTypes(used.doTypes, used.doTypes);
    Elements fresh;
    for (SCLElement* doType : Elements(used.doTypes)) {
        const Elements das = ChildrenOf(doType, "DA");
        for (SCLElement* da : das)
            AddAttributeType(da, used.daTypes, used.enumTypes, fresh);
    }
    ReferredAttributeTypes(used.daTypes, used.daTypes, used.enumTypes);
}

SCLElement* FollowPath(SCLElement* current, QString rest, const QString& typeTag)
{
    while (rest.contains('.')) {
        const int dot = static_cast<int>(rest.indexOf('.'));
        SCLElement* child = FirstNamed(current->GetChildList(), "name", rest.left(dot));
        current = TypeOf(child, "type", typeTag);
        if (current == nullptr)
            return nullptr;
        rest = rest.mid(dot + 1);
    }
    return rest.isEmpty() ? nullptr : FirstNamed(current->GetChildList(), "name", rest);
}

SCLElement* DeclarationOf(SCLElement* doi)
{
    SCLElement* lnType = TypeOf(doi->GetParent(""), "lnType", "LNodeType");
    return lnType == nullptr
               ? nullptr
               : FirstNamed(ChildrenOf(lnType, "DO"), "name", doi->GetAttribute("name"));
}

} // namespace

} // namespace Corvane::Test::Plain

namespace
{

const QByteArray g_pathTypes =
    R"(<LNodeType id="N"><DO name="A" type="Top"/><DO name="" type="Unnamed"/><DO name="X.Y"/>)"
    R"(<DO name="Lost" type="none"/><DO name="S" type="Top"/><DO name="S" type="Unnamed"/>)"
    R"(<DO name="Circle" type="Circle"/></LNodeType>)"
    R"(<DOType id="Top"><SDO name="b" type="Sub"/><DA name="d" bType="Struct" type="Attr"/>)"
    R"(<DA name="plain" bType="INT32"/><DA name="dup" type="Attr"/></DOType>)"
    R"(<DOType id="Sub"><SDO name="c" type="Leaf"/></DOType><DOType id="Leaf"><DA name="v"/></DOType>)"
    R"(<DOType id="Unnamed"><SDO name="u"/></DOType>)"
    R"(<DOType id="Circle"><SDO name="Circle" type="Circle"/></DOType>)"
    R"(<DOType id="Attr"><SDO name="wrong kind"/></DOType>)"
    R"(<DAType id="Attr"><BDA name="e" type="Deep"/><BDA name="" type="Deep"/></DAType>)"
    R"(<DAType id="Deep"><BDA name="f"/></DAType>)"
    R"(<DAType id="Sub"><BDA name="wrong kind"/></DAType>)";

} // namespace

class SCLHelp_DataTypesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReferenceLeadsToTheTypeOfThatIdAndKind_data() { ReferenceRows(); }
    void aReferenceLeadsToTheTypeOfThatIdAndKind();
    void theTagOfTheReferringElementIsNotLookedAt_data() { ReferenceRows(); }
    void theTagOfTheReferringElementIsNotLookedAt();
    void bTypeIsNotLookedAt_data() { ReferenceRows(); }
    void bTypeIsNotLookedAt();
    void ofEqualIdsTheFirstWins_data() { ReferenceRows(); }
    void ofEqualIdsTheFirstWins();
    void idsCompareExactly_data() { ReferenceRows(); }
    void idsCompareExactly();
    void aMissingReferenceIsTheEmptyId_data() { ReferenceRows(); }
    void aMissingReferenceIsTheEmptyId();
    void onlyTheFirstDataTypeTemplatesCounts_data() { ReferenceRows(); }
    void onlyTheFirstDataTypeTemplatesCounts();
    void typesElsewhereAreNotFound_data() { ReferenceRows(); }
    void typesElsewhereAreNotFound();
    void withoutElementOrDocumentOrRootOrTemplatesThereIsNoType_data() { ReferenceRows(); }
    void withoutElementOrDocumentOrRootOrTemplatesThereIsNoType();
    void aDetachedElementHasNoType_data() { ReferenceRows(); }
    void aDetachedElementHasNoType();

    void aDOIIsDeclaredInTheTypeOfItsParent_data();
    void aDOIIsDeclaredInTheTypeOfItsParent();
    void anSDIFindsADeclarationOnlyByAnEmptyTypeId();
    void aDOIWithoutParentHasNoDeclaration();
    void aDottedNameIsFollowedThroughDOTypes_data();
    void aDottedNameIsFollowedThroughDOTypes();
    void aDottedNameIsFollowedThroughDATypes_data();
    void aDottedNameIsFollowedThroughDATypes();
    void anEmptyNameDoesNotTouchTheType();
    void ofChildrenOfEqualNameTheFirstIsFollowed();
    void aPathBelowADetachedTypeHasOneStepOnly();
    void aPathMayGoRoundInACircleForAMillionSteps();
    void namesMayHoldAnyCharacters();
    void aTypeIsFoundByTagAndId_data();
    void aTypeIsFoundByTagAndId();

    void newTypesOfOneTypeComeBeforeWhatIsBelowThem();
    void aTypeOfTheInputStaysOutUnlessItIsReached();
    void knownTypesKeepTheirPlaceAndAreNotExpanded();
    void aKnownTypeOfTheInputIsExpandedAllTheSame();
    void theSameListMayBePassedTwice();
    void circlesOfTypesEnd_data();
    void circlesOfTypesEnd();
    void referencesThatLeadNowhereArePassedOver();
    void theSecondOfEqualIdsIsNeverReached();
    void attributeTypesGoByBType_data();
    void attributeTypesGoByBType();
    void attributeTypesOfOneTypeComeBeforeWhatIsBelowThem();
    void typesOutsideADocumentReachNothing();
    void nullEntriesArePassedOver();
    void aChainOfAHundredThousandTypesIsFollowed();

    void theTemplatesOfIEDsAreGatheredInFourLists();
    void theFirstLN0OfAnLDeviceComesFirst();
    void onlyNodesOfFirstServersCount();
    void whatTheListsHoldStaysInFrontAndIsExpanded();
    void withoutIEDsOrRootOrTemplatesTheListsStayAsTheyWere();
    void oneListMayStandForSeveral();
    void iedsOfSeveralDocumentsFollowTheirOwnTemplates();
    void theClosuresAgreeWithPlainRecursions();
    void nothingIsChanged();
};

void SCLHelp_DataTypesTest::aReferenceLeadsToTheTypeOfThatIdAndKind()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root =
        control.OpenRoot(TemplateFile(AllTypes({"id=\"other\"", "id=\"x\"", "id=\"X\""})));

    QCOMPARE(reference.lookup(Referring(root, reference.attribute, "x")),
             At(root, QStringLiteral("DataTypeTemplates/%1[1]").arg(reference.typeTag)));
}

void SCLHelp_DataTypesTest::theTagOfTheReferringElementIsNotLookedAt()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(AllTypes({"id=\"x\""})));

    for (const char* tag : {"LN", "LN0", "DO", "SDO", "DA", "BDA", "SCL", "Private"})
        QCOMPARE(IdText(reference.lookup(AddChild(root, tag, {reference.attribute, "x"}))),
                 QString::fromLatin1(reference.typeTag) + " x");
}

void SCLHelp_DataTypesTest::bTypeIsNotLookedAt()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(AllTypes({"id=\"x\""})));
    SCLElement* element = Referring(root, reference.attribute, "x");

    for (const char* bType : {"Struct", "Enum", "INT32", ""}) {
        element->SetAttribute("bType", bType, false);
        QCOMPARE(IdText(reference.lookup(element)), QString::fromLatin1(reference.typeTag) + " x");
    }
}

void SCLHelp_DataTypesTest::ofEqualIdsTheFirstWins()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root =
        control.OpenRoot(TemplateFile(AllTypes({"id=\"x\" desc=\"1\"", "id=\"x\" desc=\"2\""})));

    QCOMPARE(ElementText(reference.lookup(Referring(root, reference.attribute, "x"))),
             QStringLiteral("<%1 id=\"x\" desc=\"1\"/>").arg(reference.typeTag));
}

void SCLHelp_DataTypesTest::idsCompareExactly()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(AllTypes({"id=\"Type\""})));

    for (const QString& id :
         {QString("TYPE"), QString("Typ"), QString("Type1"), QString("Type "), QString("Type.Type"),
          QString("Type") + QChar(1), QString(1000000, 'T')}) {
        SCLElement* element = Referring(root, reference.attribute, id);
        QVERIFY(reference.lookup(element) == nullptr);
        SCLElement* type = AddChild(At(root, "DataTypeTemplates"), reference.typeTag, {"id", id});
        QCOMPARE(reference.lookup(element), type);
    }
}

void SCLHelp_DataTypesTest::aMissingReferenceIsTheEmptyId()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    const auto found = [&](const QList<QByteArray>& types, const QStringList& attributes) {
        SCLElement* root = control.OpenRoot(TemplateFile(AllTypes(types)));
        return IdText(reference.lookup(AddChild(root, "Any", attributes)));
    };
    const QString tag = QString::fromLatin1(reference.typeTag);

    for (const QStringList& attributes : {QStringList(), QStringList{reference.attribute, ""}}) {
        QCOMPARE(found({"id=\"x\"", "id=\" \""}, attributes), QString("null"));
        QCOMPARE(found({"id=\"x\"", "id=\"\" name=\"e\"", "name=\"m\""}, attributes), tag + " e");
        QCOMPARE(found({"id=\"x\"", "name=\"m\"", "id=\"\" name=\"e\""}, attributes), tag + " m");
    }
}

void SCLHelp_DataTypesTest::onlyTheFirstDataTypeTemplatesCounts()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><DataTypeTemplates/><DataTypeTemplates>" +
                                        AllTypes({"id=\"x\""}) + "</DataTypeTemplates></SCL>");

    QVERIFY(reference.lookup(Referring(root, reference.attribute, "x")) == nullptr);
}

void SCLHelp_DataTypesTest::typesElsewhereAreNotFound()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    const QByteArray types = AllTypes({"id=\"x\""});
    SCLElement* root =
        control.OpenRoot("<SCL>" + types + "<IED><DataTypeTemplates>" + types +
                         "</DataTypeTemplates></IED><DataTypeTemplates><DOType id=\"y\">" + types +
                         "</DOType></DataTypeTemplates></SCL>");

    QVERIFY(reference.lookup(Referring(root, reference.attribute, "x")) == nullptr);
}

void SCLHelp_DataTypesTest::withoutElementOrDocumentOrRootOrTemplatesThereIsNoType()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    QVERIFY(reference.lookup(nullptr) == nullptr);

    SCLElement withoutDocument("LN", nullptr, nullptr);
    QVERIFY(reference.lookup(&withoutDocument) == nullptr);

    SCLDocument empty;
    SCLElement withoutRoot("LN", &empty, nullptr);
    QVERIFY(reference.lookup(&withoutRoot) == nullptr);

    SCLElement* withoutTemplates = At(control.OpenRoot("<SCL><IED/></SCL>"), "IED");
    QVERIFY(reference.lookup(withoutTemplates) == nullptr);
}

void SCLHelp_DataTypesTest::aDetachedElementHasNoType()
{
    const Reference& reference = FetchedReference();
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(AllTypes({"id=\"x\""})));
    SCLElement* parent = AddChild(root, "Private");
    SCLElement* element = AddChild(parent, "Any", {reference.attribute, "x"});
    QVERIFY(reference.lookup(element) != nullptr);

    root->DetachChild(parent, false);
    const std::unique_ptr<SCLElement> owner(parent);
    QVERIFY(reference.lookup(element) == nullptr);
    const std::unique_ptr<SCLElement> types(At(root, "DataTypeTemplates"));
    root->DetachChild(types.get(), false);
    QVERIFY(reference.lookup(Referring(root, reference.attribute, "x")) == nullptr);
}

void SCLHelp_DataTypesTest::aDOIIsDeclaredInTheTypeOfItsParent_data()
{
    QTest::addColumn<QByteArray>("doi");
    QTest::addColumn<QString>("found");
    QTest::newRow("DO") << QByteArray("name=\"A\"") << "<DO name=\"A\" type=\"1\"/>";
    QTest::newRow("no such DO") << QByteArray("name=\"B\"") << "null";
    QTest::newRow("other case") << QByteArray("name=\"a\"") << "null";
    QTest::newRow("not a DO") << QByteArray("name=\"P\"") << "null";
    QTest::newRow("dotted, whole") << QByteArray("name=\"A.b\"") << "null";
    QTest::newRow("dotted DO") << QByteArray("name=\"X.Y\"") << "<DO name=\"X.Y\"/>";
    QTest::newRow("no name") << QByteArray() << "<DO/>";
    QTest::newRow("empty name") << QByteArray("name=\"\"") << "<DO/>";
}

void SCLHelp_DataTypesTest::aDOIIsDeclaredInTheTypeOfItsParent()
{
    QFETCH(QByteArray, doi);
    QFETCH(QString, found);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="other"><DO name="B"/></LNodeType>)"
        R"(<LNodeType id="N"><P name="P"/><DO name="A" type="1"/><DO name="A" type="2"/>)"
        R"(<DO name="X.Y"/><DO/></LNodeType>)",
        "<LN lnType=\"N\"><DOI " + doi + "/></LN>"));

    QCOMPARE(ElementText(SCLHelp::GetDOFromDOI(At(root, "LN/DOI"))), found);
}

void SCLHelp_DataTypesTest::anSDIFindsADeclarationOnlyByAnEmptyTypeId()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<LNodeType id="N"><DO name="s"/></LNodeType>)",
                     R"(<LN lnType="N"><DOI name="d"><SDI name="s"/></DOI></LN>)"));
    SCLElement* sdi = At(root, "LN/DOI/SDI");
    QVERIFY(SCLHelp::GetDOFromDOI(sdi) == nullptr);

    SCLElement* unnamed = AddChild(At(root, "DataTypeTemplates"), "LNodeType");
    SCLElement* declaration = AddChild(unnamed, "DO", {"name", "s"});
    QCOMPARE(SCLHelp::GetDOFromDOI(sdi), declaration);
}

void SCLHelp_DataTypesTest::aDOIWithoutParentHasNoDeclaration()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(R"(<LNodeType><DO/></LNodeType>)"));
    SCLElement orphan("DOI", root->GetDocument(), nullptr);

    QVERIFY(SCLHelp::GetDOFromDOI(nullptr) == nullptr);
    QVERIFY(SCLHelp::GetDOFromDOI(&orphan) == nullptr);
    orphan.SetParent(root);
    QCOMPARE(SCLHelp::GetDOFromDOI(&orphan), At(root, "DataTypeTemplates/LNodeType/DO"));
}

void SCLHelp_DataTypesTest::aDottedNameIsFollowedThroughDOTypes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("found");
    QTest::newRow("empty") << ""
                           << "null";
    QTest::newRow("DO") << "A"
                        << "DO A";
    QTest::newRow("unknown") << "B"
                             << "null";
    QTest::newRow("other case") << "a"
                                << "null";
    QTest::newRow("SDO") << "A.b"
                         << "SDO b";
    QTest::newRow("DA") << "A.d"
                        << "DA d";
    QTest::newRow("SDO of SDO") << "A.b.c"
                                << "SDO c";
    QTest::newRow("DA of SDO of SDO") << "A.b.c.v"
                                      << "DA v";
    QTest::newRow("too long") << "A.b.c.v.w"
                              << "null";
    QTest::newRow("a DA goes on in the DOType of its type") << "A.d.wrong kind"
                                                            << "SDO wrong kind";
    QTest::newRow("not in its DAType") << "A.d.e"
                                       << "null";
    QTest::newRow("dot behind") << "A."
                                << "null";
    QTest::newRow("dot behind the second") << "A.b."
                                           << "null";
    QTest::newRow("dot in front") << ".u"
                                  << "SDO u";
    QTest::newRow("only a dot") << "."
                                << "null";
    QTest::newRow("two dots") << ".."
                              << "null";
    QTest::newRow("two dots inside") << "A..b"
                                     << "null";
    QTest::newRow("a name with a dot is not met") << "X.Y"
                                                  << "null";
    QTest::newRow("no such type") << "Lost.x"
                                  << "null";
    QTest::newRow("no such type, itself") << "Lost"
                                          << "DO Lost";
    QTest::newRow("first of equal names") << "S.b"
                                          << "SDO b";
    QTest::newRow("second of equal names") << "S.u"
                                           << "null";
    QTest::newRow("in a circle") << "Circle.Circle.Circle"
                                 << "SDO Circle";
    QTest::newRow("blank") << " A"
                           << "null";
}

void SCLHelp_DataTypesTest::aDottedNameIsFollowedThroughDOTypes()
{
    QFETCH(QString, path);
    QFETCH(QString, found);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(g_pathTypes));
    SCLElement* lnType = At(root, "DataTypeTemplates/LNodeType");

    QCOMPARE(IdText(SCLHelp::GetDOFromLNTypeAndName(lnType, path)), found);
}

void SCLHelp_DataTypesTest::aDottedNameIsFollowedThroughDATypes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("found");
    QTest::newRow("empty") << ""
                           << "null";
    QTest::newRow("DA") << "d"
                        << "DA d";
    QTest::newRow("SDO") << "b"
                         << "SDO b";
    QTest::newRow("BDA") << "d.e"
                         << "BDA e";
    QTest::newRow("whatever the bType") << "dup.e"
                                        << "BDA e";
    QTest::newRow("BDA of BDA") << "d.e.f"
                                << "BDA f";
    QTest::newRow("empty name inside") << "d..f"
                                       << "BDA f";
    QTest::newRow("an SDO goes on in the DAType of its type") << "b.wrong kind"
                                                              << "BDA wrong kind";
    QTest::newRow("not in its DOType") << "b.c"
                                       << "null";
    QTest::newRow("no type") << "plain.e"
                             << "null";
    QTest::newRow("too long") << "d.e.f.g"
                              << "null";
    QTest::newRow("dot behind") << "d."
                                << "null";
    QTest::newRow("dot in front") << ".d"
                                  << "null";
    QTest::newRow("only a dot") << "."
                                << "null";
}

void SCLHelp_DataTypesTest::aDottedNameIsFollowedThroughDATypes()
{
    QFETCH(QString, path);
    QFETCH(QString, found);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(g_pathTypes));
    SCLElement* doType = At(root, "DataTypeTemplates/DOType");

    QCOMPARE(IdText(SCLHelp::GetDAFromDOTypeAndName(doType, path)), found);
}

void SCLHelp_DataTypesTest::anEmptyNameDoesNotTouchTheType()
{
    QVERIFY(SCLHelp::GetDOFromLNTypeAndName(nullptr, QString()) == nullptr);
    QVERIFY(SCLHelp::GetDAFromDOTypeAndName(nullptr, "") == nullptr);
}

void SCLHelp_DataTypesTest::ofChildrenOfEqualNameTheFirstIsFollowed()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="T"><SDO name="n" type="1"/><SDO name="n" type="2"/></DOType>)"
                     R"(<DAType id="1"/><DAType id="2"><BDA name="x"/></DAType>)"));
    SCLElement* doType = At(root, "DataTypeTemplates/DOType");

    QCOMPARE(SCLHelp::GetDAFromDOTypeAndName(doType, "n"), At(doType, "SDO[0]"));
    // No second try after the first one led into a type without the rest.
    QVERIFY(SCLHelp::GetDAFromDOTypeAndName(doType, "n.x") == nullptr);
}

void SCLHelp_DataTypesTest::aPathBelowADetachedTypeHasOneStepOnly()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(g_pathTypes));
    SCLElement* templates = At(root, "DataTypeTemplates");
    const std::unique_ptr<SCLElement> lnType(At(templates, "LNodeType"));
    templates->DetachChild(lnType.get(), false);

    QCOMPARE(IdText(SCLHelp::GetDOFromLNTypeAndName(lnType.get(), "A")), QString("DO A"));
    QVERIFY(SCLHelp::GetDOFromLNTypeAndName(lnType.get(), "A.b") == nullptr);
}

void SCLHelp_DataTypesTest::aPathMayGoRoundInACircleForAMillionSteps()
{
    TestControl control;
    QByteArray types;
    for (int i = 0; i < 20000; ++i)
        types += "<DOType id=\"" + QByteArray::number(i) + "\"/>";
    types += R"(<DOType id="T"><SDO name="n" type="T"/></DOType><DOType id="N"/>)";
    SCLElement* root = control.OpenRoot(TemplateFile(types));
    SCLElement* doType = At(root, "DataTypeTemplates/DOType[20000]");
    const QString path = QString("n.").repeated(1000000);

    QCOMPARE(SCLHelp::GetDOFromLNTypeAndName(doType, path + 'n'), At(doType, "SDO"));
    QVERIFY(SCLHelp::GetDOFromLNTypeAndName(doType, path) == nullptr);
    QVERIFY(SCLHelp::GetDOFromLNTypeAndName(doType, path + 'm') == nullptr);
}

void SCLHelp_DataTypesTest::namesMayHoldAnyCharacters()
{
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (const QString& name :
         {QString(QChar(1)), QString("%1"), QString(1000000, 'x'), QString("a\nb"),
          QString::fromUtf8("\xc3\xa9\xf0\x9d\x84\x9e"), QString("/")}) {
        SCLElement* type = AddChild(templates, "DOType", {"id", name});
        SCLElement* child = AddChild(type, "SDO", {"name", name, "type", name});

        QCOMPARE(SCLHelp::GetDOFromLNTypeAndName(type, name), child);
        QCOMPARE(SCLHelp::GetDOFromLNTypeAndName(type, name + '.' + name), child);
    }
}

void SCLHelp_DataTypesTest::aTypeIsFoundByTagAndId_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("found");
    for (const char* tag : {"LNodeType", "DOType", "DAType", "EnumType", "Private"})
        QTest::newRow(tag) << tag << "x" << QStringLiteral("<%1 id=\"x\" desc=\"1\"/>").arg(tag);
    QTest::newRow("unknown id") << "DOType"
                                << "y"
                                << "null";
    QTest::newRow("id in other case") << "DOType"
                                      << "X"
                                      << "null";
    QTest::newRow("empty id") << "DOType"
                              << ""
                              << "<DOType/>";
    QTest::newRow("no empty id") << "DAType"
                                 << ""
                                 << "null";
    QTest::newRow("unknown tag") << "Nowhere"
                                 << "x"
                                 << "null";
    QTest::newRow("tag in other case") << "dotype"
                                       << "x"
                                       << "null";
    QTest::newRow("empty tag") << ""
                               << "x"
                               << "null";
    QTest::newRow("not a direct child") << "SDO"
                                        << "x"
                                        << "null";
}

void SCLHelp_DataTypesTest::aTypeIsFoundByTagAndId()
{
    QFETCH(QString, tag);
    QFETCH(QString, id);
    QFETCH(QString, found);
    TestControl control;
    QByteArray types = AllTypes({"id=\"x\" desc=\"1\"", "id=\"x\" desc=\"2\""}) +
                       R"(<Private id="x" desc="1"/><DOType><SDO id="x"/></DOType>)";
    SCLElement* root = control.OpenRoot(
        "<SCL><DataTypeTemplates>" + types +
        R"(</DataTypeTemplates><DataTypeTemplates><DAType/></DataTypeTemplates></SCL>)");
    if (found == QLatin1String("<DOType/>"))
        found = QStringLiteral("<DOType><SDO id=\"x\"/></DOType>");

    QCOMPARE(ElementText(SCLHelp::GetDataTypeFromID(root, tag, id)), found);
    SCLElement* withoutTemplates = control.OpenRoot("<SCL/>");
    QVERIFY(SCLHelp::GetDataTypeFromID(withoutTemplates, tag, id) == nullptr);
}

void SCLHelp_DataTypesTest::newTypesOfOneTypeComeBeforeWhatIsBelowThem()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="A"><SDO type="B"/><SDO type="C"/><SDO type="B"/></DOType>)"
        R"(<DOType id="Z"><SDO type="E"/><SDO type="Y"/></DOType>)"
        R"(<DOType id="C"><SDO type="E"/><SDO type="F"/></DOType>)"
        R"(<DOType id="B"><SDO type="D"/><SDO type="C"/></DOType>)"
        R"(<DOType id="D"><DA type="X" bType="Struct"/><SDO type="G"/></DOType>)"
        R"(<DOType id="E"/><DOType id="F"/><DOType id="G"/><DOType id="X"/><DOType id="Y"/>)"));
    SCLElement* a = At(root, "DataTypeTemplates/DOType[0]");
    SCLElement* z = At(root, "DataTypeTemplates/DOType[1]");

    Elements referred;
    SCLHelp::GetReferedDOTypeFromDOType({a, z}, referred);
    QCOMPARE(IdTexts(referred).join(' ').remove("DOType "), QString("B C D G E F Y"));
}

void SCLHelp_DataTypesTest::aTypeOfTheInputStaysOutUnlessItIsReached()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="A"><SDO type="B"/></DOType><DOType id="B"/><DOType id="C"/>)"));
    const Elements types = At(root, "DataTypeTemplates")->FindChildByType("DOType", false);

    Elements referred;
    SCLHelp::GetReferedDOTypeFromDOType(types, referred);
    QCOMPARE(referred, Elements{types.at(1)});
}

void SCLHelp_DataTypesTest::knownTypesKeepTheirPlaceAndAreNotExpanded()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="A"><SDO type="B"/><SDO type="C"/></DOType>)"
                     R"(<DOType id="B"><SDO type="D"/></DOType><DOType id="C"/><DOType id="D"/>)"));
    const Elements types = At(root, "DataTypeTemplates")->FindChildByType("DOType", false);

    Elements referred{root, types.at(1), root};
    SCLHelp::GetReferedDOTypeFromDOType({types.at(0)}, referred);
    QCOMPARE(referred, (Elements{root, types.at(1), root, types.at(2)}));
}

void SCLHelp_DataTypesTest::aKnownTypeOfTheInputIsExpandedAllTheSame()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="A"><SDO type="B"/></DOType><DOType id="B"/>)"));
    const Elements types = At(root, "DataTypeTemplates")->FindChildByType("DOType", false);

    Elements referred{types.at(0)};
    SCLHelp::GetReferedDOTypeFromDOType({types.at(0), types.at(0)}, referred);
    QCOMPARE(referred, types);
}

void SCLHelp_DataTypesTest::theSameListMayBePassedTwice()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="1"><SDO type="3"/></DOType><DOType id="2"><SDO type="4"/></DOType>)"
        R"(<DOType id="3"><SDO type="5"/></DOType><DOType id="4"/><DOType id="5"/>)"
        R"(<DAType id="1"><BDA bType="Struct" type="3"/></DAType>)"
        R"(<DAType id="2"><BDA bType="Enum" type="3"/></DAType>)"
        R"(<DAType id="3"><BDA bType="Struct" type="2"/></DAType><EnumType id="3"/>)"));
    SCLElement* templates = At(root, "DataTypeTemplates");

    Elements doTypes = templates->FindChildByType("DOType", false).mid(0, 2);
    SCLHelp::GetReferedDOTypeFromDOType(doTypes, doTypes);
    QCOMPARE(IdTexts(doTypes).join(' ').remove("DOType "), QString("1 2 3 5 4"));

    Elements all = templates->FindChildByType("DAType", false).mid(0, 1);
    SCLHelp::GetReferedDAAndEnumTypeFromDAType(all, all, all);
    QCOMPARE(IdTexts(all), (QStringList{"DAType 1", "DAType 3", "DAType 2", "EnumType 3"}));
}

void SCLHelp_DataTypesTest::circlesOfTypesEnd_data()
{
    QTest::addColumn<QByteArray>("types");
    QTest::addColumn<QString>("referred");
    QTest::newRow("of one") << QByteArray("A>A") << "A";
    QTest::newRow("of two") << QByteArray("A>B B>A") << "B A";
    QTest::newRow("of three, twice each") << QByteArray("A>BB B>CC C>AA") << "B C A";
    QTest::newRow("not through the first") << QByteArray("A>B B>C C>B") << "B C";
    QTest::newRow("all with all") << QByteArray("A>ABC B>ABC C>ABC") << "A B C";
}

void SCLHelp_DataTypesTest::circlesOfTypesEnd()
{
    QFETCH(QByteArray, types);
    QFETCH(QString, referred);
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (const QByteArray& rule : types.split(' ')) {
        SCLElement* doType = AddChild(templates, "DOType", {"id", rule.left(1)});
        SCLElement* daType = AddChild(templates, "DAType", {"id", rule.left(1)});
        for (char type : rule.mid(2)) {
            AddChild(doType, "SDO", {"type", QChar(type)});
            AddChild(daType, "BDA", {"bType", "Struct", "type", QChar(type)});
        }
    }

    Elements doTypes;
    SCLHelp::GetReferedDOTypeFromDOType({templates->GetFirstChild("DOType")}, doTypes);
    QCOMPARE(IdTexts(doTypes).join(' ').remove("DOType "), referred);
    Elements daTypes;
    Elements enumTypes;
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({templates->GetFirstChild("DAType")}, daTypes,
                                               enumTypes);
    QCOMPARE(IdTexts(daTypes).join(' ').remove("DAType "), referred);
    QCOMPARE(enumTypes, Elements());
}

void SCLHelp_DataTypesTest::referencesThatLeadNowhereArePassedOver()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="A"><SDO type="none"/><SDO/><SDO type="B"/></DOType><DOType id="B"/>)"
        R"(<DAType id="B"/><EnumType id="C"/>)"
        R"(<DAType id="A"><BDA bType="Struct" type="C"/><BDA bType="Enum" type="B"/>)"
        R"(<BDA bType="Struct" type="B"/><BDA bType="Enum" type="C"/></DAType>)"));
    SCLElement* templates = At(root, "DataTypeTemplates");

    Elements referred;
    SCLHelp::GetReferedDOTypeFromDOType({At(templates, "DOType")}, referred);
    QCOMPARE(IdTexts(referred), QStringList{"DOType B"});
    Elements daTypes;
    Elements enumTypes;
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({At(templates, "DAType[1]")}, daTypes, enumTypes);
    QCOMPARE(IdTexts(daTypes), QStringList{"DAType B"});
    QCOMPARE(IdTexts(enumTypes), QStringList{"EnumType C"});
}

void SCLHelp_DataTypesTest::theSecondOfEqualIdsIsNeverReached()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="A"><SDO type="B"/><SDO type="B"/></DOType><DOType id="B"/>)"
                     R"(<DOType id="B"><SDO type="C"/></DOType><DOType id="C"/>)"));
    const Elements types = At(root, "DataTypeTemplates")->FindChildByType("DOType", false);

    Elements referred;
    SCLHelp::GetReferedDOTypeFromDOType({types.at(0)}, referred);
    QCOMPARE(referred, Elements{types.at(1)});
}

void SCLHelp_DataTypesTest::attributeTypesGoByBType_data()
{
    QTest::addColumn<QString>("bType");
    QTest::addColumn<QStringList>("referred");
    QTest::newRow("Struct") << "Struct" << QStringList{"DAType x"};
    QTest::newRow("Enum") << "Enum" << QStringList{"EnumType x"};
    for (const char* bType : {"", "struct", "STRUCT", "Struct ", "enum", "INT32", "CODED ENUM"})
        QTest::newRow(QByteArray("\"") + bType + "\"") << bType << QStringList();
}

void SCLHelp_DataTypesTest::attributeTypesGoByBType()
{
    QFETCH(QString, bType);
    QFETCH(QStringList, referred);
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DAType id="A"><BDA type="x"/></DAType><DAType id="x"/><EnumType id="x"/>)"
                     R"(<LNodeType id="N"><DO type="O"/></LNodeType>)"
                     R"(<DOType id="O"><DA type="x"/></DOType>)",
                     R"(<IED><AccessPoint><Server><LDevice><LN lnType="N"/></LDevice></Server>)"
                     R"(</AccessPoint></IED>)"));
    SCLElement* daType = At(root, "DataTypeTemplates/DAType");
    At(daType, "BDA")->SetAttribute("bType", bType, false);
    At(root, "DataTypeTemplates/DOType/DA")->SetAttribute("bType", bType, false);

    Elements daTypes;
    Elements enumTypes;
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({daType}, daTypes, enumTypes);
    QCOMPARE(IdTexts(daTypes + enumTypes), referred);

    Elements usedDATypes;
    Elements usedEnumTypes;
    Elements others;
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED")}, others, others, usedDATypes,
                                        usedEnumTypes);
    QCOMPARE(IdTexts(usedDATypes + usedEnumTypes), referred);
}

void SCLHelp_DataTypesTest::attributeTypesOfOneTypeComeBeforeWhatIsBelowThem()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DAType id="A"><BDA bType="Enum" type="3"/><BDA bType="Struct" type="B"/>)"
        R"(<BDA bType="Struct" type="C"/><BDA bType="Enum" type="1"/></DAType>)"
        R"(<DAType id="B"><BDA bType="Struct" type="D"/><BDA bType="Enum" type="2"/></DAType>)"
        R"(<DAType id="C"><BDA bType="Enum" type="4"/><BDA bType="Struct" type="E"/></DAType>)"
        R"(<DAType id="D"><BDA bType="Enum" type="5"/></DAType><DAType id="E"/>)"
        R"(<EnumType id="1"/><EnumType id="2"/><EnumType id="3"/><EnumType id="4"/>)"
        R"(<EnumType id="5"/>)"));
    SCLElement* templates = At(root, "DataTypeTemplates");

    Elements daTypes{At(templates, "DAType[4]")};
    Elements enumTypes{At(templates, "EnumType[3]")};
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({At(templates, "DAType[0]")}, daTypes, enumTypes);
    QCOMPARE(IdTexts(daTypes).join(' ').remove("DAType "), QString("E B C D"));
    QCOMPARE(IdTexts(enumTypes).join(' ').remove("EnumType "), QString("4 3 1 2 5"));
}

void SCLHelp_DataTypesTest::typesOutsideADocumentReachNothing()
{
    TestControl control;
    SCLElement doType("DOType", nullptr, nullptr);
    AddChild(&doType, "SDO");
    SCLElement daType("DAType", nullptr, nullptr);
    AddChild(&daType, "BDA", {"bType", "Struct"});

    Elements referred;
    SCLHelp::GetReferedDOTypeFromDOType({&doType}, referred);
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({&daType}, referred, referred);
    SCLHelp::GetReferedDOTypeFromDOType({}, referred);
    SCLHelp::GetReferedDAAndEnumTypeFromDAType({}, referred, referred);
    QCOMPARE(referred, Elements());
}

void SCLHelp_DataTypesTest::nullEntriesArePassedOver()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="N"><DO type="A"/></LNodeType><DOType id="A"><SDO type="B"/></DOType>)"
        R"(<DOType id="B"/>)",
        R"(<IED><AccessPoint><Server><LDevice><LN lnType="N"/></LDevice></Server>)"
        R"(</AccessPoint></IED>)"));

    Elements doTypes{nullptr, At(root, "DataTypeTemplates/DOType")};
    SCLHelp::GetReferedDOTypeFromDOType(doTypes, doTypes);
    QCOMPARE(IdTexts(doTypes), (QStringList{"null", "DOType A", "DOType B"}));
    Elements lnTypes{nullptr};
    Elements daTypes{nullptr};
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED"), nullptr}, lnTypes, doTypes, daTypes,
                                        daTypes);
    QCOMPARE(IdTexts(lnTypes), (QStringList{"null", "LNodeType N"}));
    QCOMPARE(IdTexts(doTypes), (QStringList{"null", "DOType A", "DOType B"}));
    QCOMPARE(IdTexts(daTypes), QStringList{"null"});
}

void SCLHelp_DataTypesTest::aChainOfAHundredThousandTypesIsFollowed()
{
    constexpr int count = 100000;
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (int i = 0; i < count; ++i) {
        const QString next = QString::number(i + 1);
        AddChild(AddChild(templates, "DOType", {"id", QString::number(i)}), "SDO", {"type", next});
        AddChild(AddChild(templates, "DAType", {"id", QString::number(i)}), "BDA",
                 {"type", next, "bType", "Struct"});
    }

    for (const char* tag : {"DOType", "DAType"}) {
        const Elements types = templates->FindChildByType(tag, false);
        Elements referred;
        if (tag == QLatin1String("DOType"))
            SCLHelp::GetReferedDOTypeFromDOType({types.first()}, referred);
        else
            SCLHelp::GetReferedDAAndEnumTypeFromDAType({types.first()}, referred, referred);
        QVERIFY(referred == types.mid(1));
    }
}

void SCLHelp_DataTypesTest::theTemplatesOfIEDsAreGatheredInFourLists()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<EnumType id="e1"/><EnumType id="e2"/><EnumType id="unused"/><DAType id="unused"/>)"
        R"(<DAType id="a1"><BDA bType="Struct" type="a2"/></DAType>)"
        R"(<DAType id="a2"><BDA bType="Enum" type="e2"/></DAType>)"
        R"(<DOType id="o1"><DA bType="Enum" type="lost"/><DA bType="Enum" type="e1"/></DOType>)"
        R"(<DOType id="o2"><SDO type="o3"/></DOType>)"
        R"(<DOType id="o3"><DA bType="Struct" type="a1"/></DOType><DOType id="unused"/>)"
        R"(<LNodeType id="n1"><DO type="o2"/><DO type="o1"/></LNodeType>)"
        R"(<LNodeType id="n2"><DO type="o1"/><DO type="lost"/></LNodeType>)"
        R"(<LNodeType id="unused"><DO type="unused"/></LNodeType>)",
        R"(<IED><AccessPoint><Server><LDevice><LN lnType="n2"/><LN lnType="lost"/><LN/></LDevice>)"
        R"(</Server></AccessPoint></IED>)"
        R"(<IED><AccessPoint><Server><LDevice/><LDevice><LN lnType="n1"/><LN lnType="n2"/>)"
        R"(</LDevice></Server></AccessPoint></IED>)"));

    Elements lnTypes;
    Elements doTypes;
    Elements daTypes;
    Elements enumTypes;
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED[1]"), At(root, "IED[0]")}, lnTypes, doTypes,
                                        daTypes, enumTypes);
    QCOMPARE(IdTexts(lnTypes), (QStringList{"LNodeType n1", "LNodeType n2"}));
    QCOMPARE(IdTexts(doTypes), (QStringList{"DOType o2", "DOType o1", "DOType o3"}));
    QCOMPARE(IdTexts(daTypes), (QStringList{"DAType a1", "DAType a2"}));
    QCOMPARE(IdTexts(enumTypes), (QStringList{"EnumType e1", "EnumType e2"}));
}

void SCLHelp_DataTypesTest::theFirstLN0OfAnLDeviceComesFirst()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="1"/><LNodeType id="2"/><LNodeType id="0"/><LNodeType id="00"/>)",
        R"(<IED><AccessPoint><Server><LDevice><LN lnType="1"/><LN lnType="2"/><LN0 lnType="0"/>)"
        R"(<LN0 lnType="00"/></LDevice></Server></AccessPoint></IED>)"));

    Elements lnTypes;
    Elements others;
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED")}, lnTypes, others, others, others);
    QCOMPARE(IdTexts(lnTypes), (QStringList{"LNodeType 0", "LNodeType 1", "LNodeType 2"}));
    QCOMPARE(others, Elements());
}

void SCLHelp_DataTypesTest::onlyNodesOfFirstServersCount()
{
    TestControl control;
    QByteArray types;
    for (const char* id : {"second server", "access point", "server", "IED", "nested", "1", "2"})
        types += QByteArray("<LNodeType id=\"") + id + "\"/>";
    SCLElement* root = control.OpenRoot(TemplateFile(
        types, R"(<IED><LN lnType="IED"/><AccessPoint/><AccessPoint><LN lnType="access point"/>)"
               R"(<Server><LN lnType="server"/><LDevice><LN lnType="2"><LN lnType="nested"/></LN>)"
               R"(</LDevice></Server>)"
               R"(<Server><LDevice><LN lnType="second server"/></LDevice></Server></AccessPoint>)"
               R"(<AccessPoint><Server><LDevice><LN lnType="1"/></LDevice></Server></AccessPoint>)"
               R"(</IED>)"));

    Elements lnTypes;
    Elements others;
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED")}, lnTypes, others, others, others);
    QCOMPARE(IdTexts(lnTypes), (QStringList{"LNodeType 2", "LNodeType 1"}));
}

void SCLHelp_DataTypesTest::whatTheListsHoldStaysInFrontAndIsExpanded()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="n"><DO type="o"/></LNodeType>)"
        R"(<LNodeType id="given"><DO type="of given"/></LNodeType>)"
        R"(<DOType id="o"/><DOType id="of given"/>)"
        R"(<DOType id="given"><SDO type="below given"/><DA bType="Enum" type="e"/></DOType>)"
        R"(<DOType id="below given"/><EnumType id="e"/><EnumType id="f"/>)"
        R"(<DAType id="given"><BDA bType="Enum" type="f"/></DAType>)",
        R"(<IED><AccessPoint><Server><LDevice><LN lnType="n"/></LDevice></Server>)"
        R"(</AccessPoint></IED>)"));
    SCLElement* templates = At(root, "DataTypeTemplates");

    Elements lnTypes{At(templates, "LNodeType[1]")};
    Elements doTypes{At(templates, "DOType[2]")};
    Elements daTypes{At(templates, "DAType")};
    Elements enumTypes{At(templates, "EnumType[1]")};
    SCLHelp::GetReferedDataTypeTeplates({At(root, "IED")}, lnTypes, doTypes, daTypes, enumTypes);
    QCOMPARE(IdTexts(lnTypes), (QStringList{"LNodeType given", "LNodeType n"}));
    QCOMPARE(IdTexts(doTypes),
             (QStringList{"DOType given", "DOType of given", "DOType o", "DOType below given"}));
    QCOMPARE(IdTexts(daTypes), QStringList{"DAType given"});
    QCOMPARE(IdTexts(enumTypes), (QStringList{"EnumType f", "EnumType e"}));
}

void SCLHelp_DataTypesTest::withoutIEDsOrRootOrTemplatesTheListsStayAsTheyWere()
{
    TestControl control;
    const QByteArray ied = R"(<IED><AccessPoint><Server><LDevice><LN lnType="n"/></LDevice>)"
                           R"(</Server></AccessPoint></IED>)";
    SCLElement* complete =
        control.OpenRoot(TemplateFile(R"(<LNodeType id="n"><DO type="o"/></LNodeType>)"
                                      R"(<DOType id="o"><SDO type="p"/></DOType><DOType id="p"/>)",
                                      ied));
    SCLElement* withoutTemplates = control.OpenRoot("<SCL>" + ied + "</SCL>");
    SCLElement withoutDocument("IED", nullptr, nullptr);
    SCLDocument empty;
    SCLElement withoutRoot("IED", &empty, nullptr);

    const Elements given{At(complete, "DataTypeTemplates/DOType")};
    for (const Elements& ieds :
         {Elements(), Elements{At(withoutTemplates, "IED")}, Elements{&withoutDocument},
          Elements{&withoutRoot}, Elements{nullptr},
          Elements{&withoutDocument, At(complete, "IED")}}) {
        Elements lnTypes = given;
        Elements doTypes = given;
        Elements daTypes = given;
        Elements enumTypes = given;
        SCLHelp::GetReferedDataTypeTeplates(ieds, lnTypes, doTypes, daTypes, enumTypes);
        QCOMPARE(lnTypes, given);
        QCOMPARE(doTypes, given);
        QCOMPARE(daTypes, given);
        QCOMPARE(enumTypes, given);
    }
}

void SCLHelp_DataTypesTest::oneListMayStandForSeveral()
{
    TestControl control;
    QByteArray types = R"(<LNodeType id="n">)";
    for (int i = 0; i < 100; ++i)
        types += "<DO type=\"" + QByteArray::number(i) + "\"/>";
    types += "</LNodeType>";
    for (int i = 0; i < 100; ++i)
        types += "<DOType id=\"" + QByteArray::number(i) + "\"><DA bType=\"Struct\" type=\"" +
                 QByteArray::number(i) + "\"/></DOType><DAType id=\"" + QByteArray::number(i) +
                 "\"/>";
    SCLElement* root = control.OpenRoot(
        TemplateFile(types, R"(<IED><AccessPoint><Server><LDevice><LN lnType="n"/></LDevice>)"
                            R"(</Server></AccessPoint></IED>)"));
    SCLElement* templates = At(root, "DataTypeTemplates");

    Elements all{At(root, "IED")};
    const Elements expected = all + templates->FindChildByType("LNodeType", false) +
                              templates->FindChildByType("DOType", false) +
                              templates->FindChildByType("DAType", false);
    SCLHelp::GetReferedDataTypeTeplates(all, all, all, all, all);
    QCOMPARE(all, expected);
}

void SCLHelp_DataTypesTest::iedsOfSeveralDocumentsFollowTheirOwnTemplates()
{
    TestControl control;
    QByteArray types;
    QByteArray nodes;
    for (int i = 0; i < 50; ++i) {
        types += "<LNodeType id=\"" + QByteArray::number(i) + "\"/>";
        nodes += "<LN lnType=\"" + QByteArray::number(i) + "\"/>";
    }
    const QByteArray file = TemplateFile(types, "<IED><AccessPoint><Server><LDevice>" + nodes +
                                                    "</LDevice></Server></AccessPoint></IED>");
    SCLElement* first = control.OpenRoot(file);
    SCLElement* second = control.OpenRoot(file);

    Elements lnTypes;
    Elements others;
    SCLHelp::GetReferedDataTypeTeplates({At(first, "IED"), At(second, "IED"), At(first, "IED")},
                                        lnTypes, others, others, others);
    QCOMPARE(lnTypes, At(first, "DataTypeTemplates")->FindChildByType("LNodeType", false) +
                          At(second, "DataTypeTemplates")->FindChildByType("LNodeType", false));
}

void SCLHelp_DataTypesTest::theClosuresAgreeWithPlainRecursions()
{
    RandomTemplates random(1);
    qsizetype found = 0;
    TestControl control;
    for (int round = 0; round < 3000; ++round) {
        SCLDocument* document = control.Create();
        SCLElement* root = document->CreateRoot(QStringLiteral("SCL"));
        random.Fill(root);
        Elements all = root->GetChildList();
        for (int i = 0; i < all.size(); ++i)
            all += all.at(i)->GetChildList();
        Elements types;
        for (SCLElement* element : Elements(all)) {
            if (element->GetTag().endsWith(QLatin1String("Type")))
                types.append(element);
        }

        for (SCLElement* element : all) {
            for (const Reference& reference : References())
                QCOMPARE(reference.lookup(element),
                         Plain::TypeOf(element, reference.attribute, reference.typeTag));
            QCOMPARE(SCLHelp::GetDOFromDOI(element), Plain::DeclarationOf(element));
            const QString path = random.Path();
            QCOMPARE(SCLHelp::GetDOFromLNTypeAndName(element, path),
                     Plain::FollowPath(element, path, "DOType"));
            QCOMPARE(SCLHelp::GetDAFromDOTypeAndName(element, path),
                     Plain::FollowPath(element, path, "DAType"));
        }

        const Elements start = random.Some(types);
        Elements doTypes = random.Some(types);
        Elements plainDOTypes = doTypes;
        SCLHelp::GetReferedDOTypeFromDOType(start, doTypes);
        Plain::ReferredDOTypes(start, plainDOTypes);
        QCOMPARE(doTypes, plainDOTypes);

        Elements daTypes = random.Some(types);
        Elements enumTypes = random.Some(types);
        Elements plainDATypes = daTypes;
        Elements plainEnumTypes = enumTypes;
        SCLHelp::GetReferedDAAndEnumTypeFromDAType(start, daTypes, enumTypes);
        Plain::ReferredAttributeTypes(start, plainDATypes, plainEnumTypes);
        QCOMPARE(daTypes, plainDATypes);
        QCOMPARE(enumTypes, plainEnumTypes);

        const Elements ieds = random.Some(root->FindChildByType("IED", false));
        Plain::Used used{random.Some(types), random.Some(types), random.Some(types),
                         random.Some(types)};
        Plain::Used plain = used;
        SCLHelp::GetReferedDataTypeTeplates(ieds, used.lnTypes, used.doTypes, used.daTypes,
                                            used.enumTypes);
        if (!ieds.isEmpty() && root->GetFirstChild("DataTypeTemplates") != nullptr)
            Plain::AddUsed(ieds, plain);
        QCOMPARE(used.lnTypes, plain.lnTypes);
        QCOMPARE(used.doTypes, plain.doTypes);
        QCOMPARE(used.daTypes, plain.daTypes);
        QCOMPARE(used.enumTypes, plain.enumTypes);
        found += used.lnTypes.size() + used.doTypes.size() + used.daTypes.size();
        control->CloseDocument(document, false);
    }
    QVERIFY(found > 10000);
}

void SCLHelp_DataTypesTest::nothingIsChanged()
{
    TestControl control;
    RandomTemplates random(2);
    SCLDocument* document = control.Create();
    SCLElement* root = document->CreateRoot(QStringLiteral("SCL"));
    random.Fill(root);
    document->SetModified(false, false);
    const QString before = ElementText(root);
    SignalLog log(document);

    Elements lists;
    const Elements types = At(root, "DataTypeTemplates")->GetChildList();
    SCLHelp::GetReferedDataTypeTeplates(root->FindChildByType("IED", false) + types, lists, lists,
                                        lists, lists);
    SCLHelp::GetReferedDOTypeFromDOType(types, lists);
    SCLHelp::GetReferedDAAndEnumTypeFromDAType(types, lists, lists);
    QVERIFY(!lists.isEmpty());
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QCOMPARE(ElementText(root), before);
}

QTEST_MAIN(SCLHelp_DataTypesTest)
#include "SCLHelp_DataTypesTest.moc"
