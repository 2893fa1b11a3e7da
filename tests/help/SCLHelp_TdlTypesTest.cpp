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

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Elements = QList<SCLElement*>;

// The result and the text that it leaves, which was "before".
QString AttributeType(SCLElement* da)
{
    QString text = QStringLiteral("before");
    const bool formed = SCLHelp::GetTDLTypeFromDA(da, text);
    return (formed ? "true " : "false ") + text;
}

QString ObjectType(SCLElement* doType)
{
    QString text = QStringLiteral("before");
    const bool formed = SCLHelp::GetTDLTypeFromDOType(doType, text);
    return (formed ? "true " : "false ") + text;
}

} // namespace

// The texts once more: the rules as plain recursions, for types that lead not back to themselves.
namespace Corvane::Test::Plain
{

namespace
{

void AddMember(QString& text, SCLElement* child, bool formed, const QString& type)
{
    if (formed && !type.isEmpty())
        text = QStringLiteral("%1(%2)%3,").arg(text).arg(child->GetAttribute("name")).arg(type);
}

bool Closed(QString& text)
{
    if (text.endsWith(','))
        text.chop(1);
    text += '}';
    return true;
}

bool AttributeType(SCLElement* da, QString& text)
{
    const QString bType = da->GetAttribute("bType");
    if (bType.isEmpty())
        return false;
    if (bType != "Struct") {
        text = SCLHelp::GetTDLTypeFromBType(bType);
        return !text.isEmpty();
    }
    SCLElement* daType = TypeOf(da, "type", "DAType");
    const Elements bdas = daType == nullptr ? Elements() : ChildrenOf(daType, "BDA");
    if (bdas.isEmpty())
        return false;
    text = '{';
    for (SCLElement* bda : bdas) {
        QString type;
        const bool formed = AttributeType(bda, type);
        AddMember(text, bda, formed, type);
    }
    return Closed(text);
}

bool ObjectType(SCLElement* doType, QString& text)
{
    const Elements sdos = ChildrenOf(doType, "SDO");
    const Elements das = ChildrenOf(doType, "DA");
    if (sdos.isEmpty() && das.isEmpty())
        return false;
    text = '{';
    for (SCLElement* sdo : sdos) {
        SCLElement* type = TypeOf(sdo, "type", "DOType");
        if (type == nullptr)
            return false;
        QString typeText;
        const bool formed = ObjectType(type, typeText);
        AddMember(text, sdo, formed, typeText);
    }
    for (SCLElement* da : das) {
        QString type;
        const bool formed = AttributeType(da, type);
        AddMember(text, da, formed, type);
    }
    return Closed(text);
}

// Which of the steps of a data object with several dots is taken is part of the rule.
SCLElement* DataObject(SCLElement* ln, const QString& doName)
{
    const int dot = static_cast<int>(doName.indexOf('.'));
    SCLElement* doi = FirstNamed(ChildrenOf(ln, "DOI"), "name", doName.left(dot));
    SCLElement* lnType = doi == nullptr ? nullptr : TypeOf(ln, "lnType", "LNodeType");
    SCLElement* current =
        lnType == nullptr ? nullptr
                          : FirstNamed(ChildrenOf(lnType, "DO"), "name", doi->GetAttribute("name"));
    if (dot < 0)
        return current;
    SCLElement* type = TypeOf(current, "type", "DOType");
    QString rest = doName.mid(dot + 1);
    while (type != nullptr && rest.indexOf('.') >= 0) {
        current = FirstNamed(type->GetChildList(), "name", rest.left(1));
        type = TypeOf(current, "type", "DOType");
        rest.remove(0, 2);
    }
    if (type == nullptr || rest.isEmpty())
        return type == nullptr ? nullptr : current;
    return FirstNamed(type->GetChildList(), "name", rest);
}

bool TypeAndACT(SCLElement* ln, const QString& doName, const QString& daName, QString& text,
                QString& act)
{
    if (doName.isEmpty() || daName.isEmpty())
        return false;
    SCLElement* type = TypeOf(DataObject(ln, doName), "type", "DOType");
    if (type == nullptr)
        return false;
    act = type->GetAttribute("cdc") == "ACT" ? "1" : "0";
    SCLElement* da = SCLHelp::GetDAFromDOTypeAndName(type, daName);
    if (da == nullptr || da->GetAttribute("bType").isEmpty())
        return false;
    text = SCLHelp::GetTDLTypeFromBType(da->GetAttribute("bType"));
    return !text.isEmpty();
}

} // namespace

} // namespace Corvane::Test::Plain

class SCLHelp_TdlTypesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBTypeHasItsWord_data();
    void aBTypeHasItsWord();
    void anyOtherTextHasNoWord_data();
    void anyOtherTextHasNoWord();

    void anAttributeHasTheWordOfItsBType_data();
    void anAttributeHasTheWordOfItsBType();
    void aStructureListsItsMembers_data();
    void aStructureListsItsMembers();
    void onlyTheBDAsOfADATypeAreMembers();
    void whatIsNoStructureIsNotResolved();

    void aDataObjectListsSDOsThenDAs_data();
    void aDataObjectListsSDOsThenDAs();
    void anSDOWithoutTypeInsideLeavesOutTheMemberAroundIt();
    void membersOfManyTypesStandSideBySide();

    void aMarkerInANameTakesPartInTheReplacements_data();
    void aMarkerInANameTakesPartInTheReplacements();
    void namesMayHoldAnyCharacters();

    void aTypeInsideItselfIsLeftOut_data();
    void aTypeInsideItselfIsLeftOut();
    void aTypeMayStandTwiceSideBySide();
    void aChainOfAHundredThousandTypesIsWrittenOut();
    void aTypeOfAMillionMembersIsWrittenOut();
    void aTypeThatDoublesAtEveryLevelIsGivenUp_data();
    void aTypeThatDoublesAtEveryLevelIsGivenUp();
    void typesThatDoubleWithoutTextAreGivenUp();
    void aDetachedTypeHasNoStructure();

    void aDataObjectOfANodeHasAWordAndTellsACT_data();
    void aDataObjectOfANodeHasAWordAndTellsACT();
    void withoutNodeOrNamesNothingIsTold();
    void aNodeOutsideADocumentTellsNothing();
    void aNameOfAMillionCirclesIsFollowed();

    void textsAgreeWithPlainRecursions();
    void nothingIsChanged();
};

void SCLHelp_TdlTypesTest::aBTypeHasItsWord_data()
{
    QTest::addColumn<QString>("word");
    const QList<QPair<const char*, const char*>> words{
        {"BOOLEAN", "Bool"},
        {"BOOL", "Bool"},
        {"bool", "Bool"},
        {"INT8", "Byte"},
        {"INI16", "Short"},
        {"INT24", "Long"},
        {"INT32", "Long"},
        {"INT128", "Ostring16"},
        {"INT8U", "Ubyte"},
        {"INT16U", "Ushort"},
        {"INT24U", "Ulong"},
        {"INT32U", "Ulong"},
        {"FLOAT32", "Float"},
        {"FLOAT64", "Double"},
        {"Enum", "Byte"},
        {"Dbpos", "Bstring2"},
        {"Tcmd", "BVstring2"},
        {"Quality", "BVstring13"},
        {"Timestamp", "Utctime"},
        {"VisString32", "VString32"},
        {"VisString64", "Vstring64"},
        {"VisString255", "Vstring255"},
        {"Octet64", "Ostring64"},
        {"EntryTime", "Btime6"},
        {"Unicode255", "UTF8Vstring255"},
        {"Check", "BVstring2"},
        {"CODED ENUM", "BVstring2"},
    };
    QCOMPARE(int(words.size()), 27);
    for (const auto& word : words)
        QTest::newRow(word.first) << QString::fromLatin1(word.second);
}

void SCLHelp_TdlTypesTest::aBTypeHasItsWord()
{
    QFETCH(QString, word);
    QCOMPARE(SCLHelp::GetTDLTypeFromBType(QTest::currentDataTag()), word);
    // The table goes one way, and letter by letter.
    QCOMPARE(SCLHelp::GetTDLTypeFromBType(word), QString());
    const QString bType = QTest::currentDataTag();
    for (const QString& other : {bType + ' ', ' ' + bType, bType.mid(1), bType + '\0'})
        QCOMPARE(SCLHelp::GetTDLTypeFromBType(other), QString());
}

void SCLHelp_TdlTypesTest::anyOtherTextHasNoWord_data()
{
    QTest::addColumn<QString>("bType");
    for (const char* bType :
         {"",           "INT16",   "INT64",       "INT64U",       "Struct",    "Bool",
          "Boolean",    "boolean", "int8",        "ENUM",         "enum",      "dbpos",
          "Octet6",     "Octet16", "VisString65", "VisString129", "ObjRef",    "Currency",
          "PhyComAddr", "TrgOps",  "OptFlds",     "SvOptFlds",    "EntryID",   "CODEDENUM",
          "Coded Enum", "INI8",    "INI32",       "Unicode",      "VString32", "FLOAT",
          "%1"})
        QTest::newRow(QByteArray("'") + bType + "'") << QString::fromLatin1(bType);
    QTest::newRow("null") << QString();
    QTest::newRow("a million characters") << QString(1000000, 'I');
}

void SCLHelp_TdlTypesTest::anyOtherTextHasNoWord()
{
    QFETCH(QString, bType);
    QVERIFY(SCLHelp::GetTDLTypeFromBType(bType).isEmpty());
}

void SCLHelp_TdlTypesTest::anAttributeHasTheWordOfItsBType_data()
{
    QTest::addColumn<QByteArray>("da");
    QTest::addColumn<QString>("result");
    QTest::newRow("word") << QByteArray(R"(<DA bType="INT32"/>)") << "true Long";
    QTest::newRow("BDA") << QByteArray(R"(<BDA bType="Enum" type="x"/>)") << "true Byte";
    QTest::newRow("no bType") << QByteArray("<DA/>") << "false before";
    QTest::newRow("empty bType") << QByteArray(R"(<DA bType=""/>)") << "false before";
    QTest::newRow("no word") << QByteArray(R"(<DA bType="INT16"/>)") << "false ";
    QTest::newRow("no word, but a type")
        << QByteArray(R"(<DA bType="struct" type="s"/>)") << "false ";
    QTest::newRow("Struct") << QByteArray(R"(<DA bType="Struct" type="s"/>)") << "true {(x)Bool}";
    QTest::newRow("Struct without DAType")
        << QByteArray(R"(<DA bType="Struct" type="none"/>)") << "false before";
    QTest::newRow("Struct without type") << QByteArray(R"(<DA bType="Struct"/>)") << "false before";
    QTest::newRow("Struct of another kind")
        << QByteArray(R"(<DA bType="Struct" type="o"/>)") << "false before";
    QTest::newRow("Struct without BDA")
        << QByteArray(R"(<DA bType="Struct" type="empty"/>)") << "false before";
    QTest::newRow("Struct of failing members")
        << QByteArray(R"(<DA bType="Struct" type="fail"/>)") << "true {}";
}

void SCLHelp_TdlTypesTest::anAttributeHasTheWordOfItsBType()
{
    QFETCH(QByteArray, da);
    QFETCH(QString, result);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="o"><DA name="x" bType="BOOL"/></DOType><DAType id="empty"><DA/></DAType>)"
        R"(<DAType id="s"><BDA name="x" bType="BOOL"/></DAType>)"
        R"(<DAType id="fail"><BDA name="x" bType="INT16"/><BDA name="y"/></DAType>)",
        "<Private>" + da + "</Private>"));

    QCOMPARE(AttributeType(At(root, "Private")->GetChildList().first()), result);
}

void SCLHelp_TdlTypesTest::aStructureListsItsMembers_data()
{
    QTest::addColumn<QByteArray>("bdas");
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << QByteArray(R"(<BDA name="a" bType="INT8"/>)") << "{(a)Byte}";
    QTest::newRow("two") << QByteArray(
                                R"(<BDA name="b" bType="INT8"/><BDA name="a" bType="Check"/>)")
                         << "{(b)Byte,(a)BVstring2}";
    QTest::newRow("nested last")
        << QByteArray(R"(<BDA name="x" bType="BOOL"/><BDA name="y" bType="INT32U"/>)"
                      R"(<BDA name="z" bType="Struct" type="in"/>)")
        << "{(x)Bool,(y)Ulong,(z){(w)Byte}}";
    QTest::newRow("nested first")
        << QByteArray(R"(<BDA name="z" bType="Struct" type="in"/><BDA name="x" bType="BOOL"/>)")
        << "{(z){(w)Byte},(x)Bool}";
    QTest::newRow("failing first")
        << QByteArray(R"(<BDA name="a" bType="INT16"/><BDA name="x" bType="BOOL"/>)")
        << "{(x)Bool}";
    QTest::newRow("failing last")
        << QByteArray(R"(<BDA name="x" bType="BOOL"/><BDA name="a" bType="INT16"/>)")
        << "{(x)Bool}";
    QTest::newRow("without bType")
        << QByteArray(R"(<BDA name="a"/><BDA name="x" bType="BOOL"/><BDA name="b" bType=""/>)")
        << "{(x)Bool}";
    QTest::newRow("all failing") << QByteArray(R"(<BDA name="a" bType="INT16"/>)") << "{}";
    QTest::newRow("nested without DAType")
        << QByteArray(R"(<BDA name="a" bType="Struct" type="none"/><BDA name="x" bType="BOOL"/>)")
        << "{(x)Bool}";
    QTest::newRow("nested without BDA")
        << QByteArray(R"(<BDA name="a" bType="Struct" type="empty"/><BDA name="x" bType="BOOL"/>)")
        << "{(x)Bool}";
    QTest::newRow("nested of failing members")
        << QByteArray(R"(<BDA name="a" bType="Struct" type="fail"/><BDA name="x" bType="BOOL"/>)")
        << "{(a){},(x)Bool}";
    QTest::newRow("without name") << QByteArray(R"(<BDA bType="BOOL"/>)") << "{()Bool}";
    QTest::newRow("names equal")
        << QByteArray(R"(<BDA name="x" bType="BOOL"/><BDA name="x" bType="INT8"/>)")
        << "{(x)Bool,(x)Byte}";
    QTest::newRow("name of signs")
        << QByteArray(R"(<BDA name="},{(" bType="BOOL"/>)") << "{(},{()Bool}";
}

void SCLHelp_TdlTypesTest::aStructureListsItsMembers()
{
    QFETCH(QByteArray, bdas);
    QFETCH(QString, text);
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DAType id="in"><BDA name="w" bType="INT8"/></DAType><DAType id="empty"/>)"
                     R"(<DAType id="fail"><BDA name="x" bType="INT16"/></DAType>)"
                     "<DAType id=\"s\">" +
                     bdas + "</DAType><DOType><DA bType=\"Struct\" type=\"s\"/></DOType>"));

    QCOMPARE(AttributeType(At(root, "DataTypeTemplates/DOType/DA")), "true " + text);
}

void SCLHelp_TdlTypesTest::onlyTheBDAsOfADATypeAreMembers()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DAType id="s"><DA name="a" bType="BOOL"/><BDA name="b" bType="BOOL">)"
                     R"(<BDA name="c" bType="BOOL"/></BDA><SDO name="d" type="s"/></DAType>)",
                     R"(<DA bType="Struct" type="s"/>)"));

    QCOMPARE(AttributeType(At(root, "DA")), QString("true {(b)Bool}"));
}

void SCLHelp_TdlTypesTest::whatIsNoStructureIsNotResolved()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DAType id="s"><BDA name="x" bType="BOOL"/></DAType>)",
                     R"(<DA bType="Enum" type="s"/><DA bType="INT16" type="s"/>)"));

    QCOMPARE(AttributeType(At(root, "DA[0]")), QString("true Byte"));
    QCOMPARE(AttributeType(At(root, "DA[1]")), QString("false "));
}

void SCLHelp_TdlTypesTest::aDataObjectListsSDOsThenDAs_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<QString>("result");
    QTest::newRow("none") << QByteArray() << "false before";
    QTest::newRow("of other kinds")
        << QByteArray(R"(<BDA bType="BOOL"/><DO type="one"/>)") << "false before";
    QTest::newRow("one DA") << QByteArray(R"(<DA name="a" bType="BOOL"/>)") << "true {(a)Bool}";
    QTest::newRow("DAs of any constraint")
        << QByteArray(R"(<DA name="a" fc="ST" bType="BOOL"/><DA name="b" fc="CF" bType="INT8"/>)")
        << "true {(a)Bool,(b)Byte}";
    QTest::newRow("one SDO") << QByteArray(R"(<SDO name="s" type="one"/>)")
                             << "true {(s){(v)Long}}";
    QTest::newRow("SDO behind a DA")
        << QByteArray(R"(<DA name="a" bType="BOOL"/><SDO name="s" type="one"/>)"
                      R"(<DA name="b" bType="INT8"/>)")
        << "true {(s){(v)Long},(a)Bool,(b)Byte}";
    QTest::newRow("structured DA")
        << QByteArray(R"(<DA name="a" bType="Struct" type="st"/>)") << "true {(a){(x)Bool}}";
    QTest::newRow("DAs that fail") << QByteArray(R"(<DA name="a" bType="INT16"/><DA name="b"/>)"
                                                 R"(<DA name="c" bType="Struct" type="none"/>)")
                                   << "true {}";
    QTest::newRow("DA that fails between others")
        << QByteArray(R"(<DA name="a" bType="BOOL"/><DA name="b" bType="INT16"/>)"
                      R"(<DA name="c" bType="INT8"/>)")
        << "true {(a)Bool,(c)Byte}";
    QTest::newRow("SDO without children")
        << QByteArray(R"(<SDO name="s" type="empty"/><DA name="a" bType="BOOL"/>)")
        << "true {(a)Bool}";
    QTest::newRow("SDO of failing members")
        << QByteArray(R"(<SDO name="s" type="fail"/>)") << "true {(s){}}";
    QTest::newRow("SDO without DOType, first")
        << QByteArray(R"(<SDO name="s" type="none"/><DA name="a" bType="BOOL"/>)") << "false {";
    QTest::newRow("SDO without DOType, second")
        << QByteArray(R"(<SDO name="s" type="one"/><SDO name="t" type="none"/>)"
                      R"(<SDO name="u" type="one"/><DA name="a" bType="BOOL"/>)")
        << "false {(s){(v)Long},";
    QTest::newRow("SDO whose own SDO has no DOType")
        << QByteArray(R"(<SDO name="s" type="broken"/><SDO name="t" type="one"/>)"
                      R"(<DA name="a" bType="BOOL"/>)")
        << "true {(t){(v)Long},(a)Bool}";
    QTest::newRow("only such an SDO")
        << QByteArray(R"(<SDO name="s" type="broken"/>)") << "true {}";
    QTest::newRow("without names")
        << QByteArray(R"(<SDO type="one"/><DA bType="BOOL"/>)") << "true {(){(v)Long},()Bool}";
}

void SCLHelp_TdlTypesTest::aDataObjectListsSDOsThenDAs()
{
    QFETCH(QByteArray, children);
    QFETCH(QString, result);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="one"><DA name="v" bType="INT32"/></DOType><DOType id="empty"/>)"
        R"(<DOType id="fail"><DA name="v" bType="INT16"/></DOType>)"
        R"(<DOType id="broken"><SDO name="ok" type="one"/><SDO name="v" type="none"/></DOType>)"
        R"(<DAType id="st"><BDA name="x" bType="BOOL"/></DAType><DOType id="top">)" +
        children + "</DOType>"));

    QCOMPARE(ObjectType(At(root, "DataTypeTemplates/DOType[4]")), result);
}

void SCLHelp_TdlTypesTest::anSDOWithoutTypeInsideLeavesOutTheMemberAroundIt()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<DOType id="1"><SDO name="a" type="2"/><DA name="x" bType="BOOL"/></DOType>)"
        R"(<DOType id="2"><SDO name="b" type="3"/><SDO name="c" type="4"/></DOType>)"
        R"(<DOType id="3"><SDO name="d" type="4"/><SDO name="e" type="none"/></DOType>)"
        R"(<DOType id="4"><DA name="y" bType="INT8"/></DOType>)"));

    QCOMPARE(ObjectType(At(root, "DataTypeTemplates/DOType")),
             QString("true {(a){(c){(y)Byte}},(x)Bool}"));
}

void SCLHelp_TdlTypesTest::membersOfManyTypesStandSideBySide()
{
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    SCLElement* top = AddChild(templates, "DOType");
    QString expected;
    for (int i = 0; i < 100; ++i) {
        const QString id = QString::number(i);
        AddChild(AddChild(templates, "DOType", {"id", id}), "DA", {"name", id, "bType", "BOOL"});
        AddChild(top, "SDO", {"name", id, "type", id});
        expected += QStringLiteral(",(%1){(%1)Bool}").arg(id);
    }

    QCOMPARE(ObjectType(top), "true {" + expected.mid(1) + '}');
}

void SCLHelp_TdlTypesTest::aMarkerInANameTakesPartInTheReplacements_data()
{
    QTest::addColumn<QString>("outer");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("text");
    QTest::newRow("type into its own name") << "o"
                                            << "%3"
                                            << "b"
                                            << "{(o){(Bool)Bool,(b)Byte}}";
    // The type goes into the name; what is left of it takes the next type.
    QTest::newRow("left for the next member") << "o"
                                              << "%1"
                                              << "b"
                                              << "{(o){(Bool)Byte,(b)Byte}}";
    QTest::newRow("kept") << "o"
                          << "%9"
                          << "b"
                          << "{(o){(%9)Bool,(b)Byte}}";
    QTest::newRow("no marker") << "50% of"
                               << "%"
                               << "%x"
                               << "{(50% of){(%)Bool,(%x)Byte}}";
    QTest::newRow("outside") << "%3"
                             << "a"
                             << "b"
                             << "{({(a)Bool,(b)Byte}){(a)Bool,(b)Byte}}";
}

void SCLHelp_TdlTypesTest::aMarkerInANameTakesPartInTheReplacements()
{
    QFETCH(QString, outer);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, text);
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    SCLElement* daType = AddChild(templates, "DAType", {"id", "s"});
    AddChild(daType, "BDA", {"name", first, "bType", "BOOL"});
    AddChild(daType, "BDA", {"name", second, "bType", "INT8"});
    SCLElement* doType = AddChild(templates, "DOType");
    AddChild(doType, "DA", {"name", outer, "bType", "Struct", "type", "s"});

    QString plain;
    QVERIFY(Plain::ObjectType(doType, plain));
    QCOMPARE(plain, text);
    QCOMPARE(ObjectType(doType), "true " + text);
}

void SCLHelp_TdlTypesTest::namesMayHoldAnyCharacters()
{
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (const QString& name :
         {QString(QChar(1)), QString(QChar(0)), QString("a\nb"), QString(1000000, 'x'),
          QString::fromUtf8("\xc3\xa9\xf0\x9d\x84\x9e")}) {
        SCLElement* doType = AddChild(templates, "DOType");
        AddChild(doType, "DA", {"name", name, "bType", "BOOL"});
        QCOMPARE(ObjectType(doType), "true {(" + name + ")Bool}");
    }
}

void SCLHelp_TdlTypesTest::aTypeInsideItselfIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("types");
    QTest::addColumn<QString>("text");
    // A type is its name and the types of its members, which have the same names in small letters.
    QTest::newRow("alone") << QByteArray("A>A") << "{}";
    QTest::newRow("beside others") << QByteArray("A>BAB B>") << "{(b){(v)Bool},(b){(v)Bool}}";
    QTest::newRow("through another") << QByteArray("A>BC B>A C>") << "{(b){},(c){(v)Bool}}";
    QTest::newRow("below the first") << QByteArray("A>B B>CB C>") << "{(b){(c){(v)Bool}}}";
    QTest::newRow("each with each") << QByteArray("A>AB B>AB") << "{(b){}}";
    QTest::newRow("of three") << QByteArray("A>B B>C C>A") << "{(b){(c){}}}";
}

void SCLHelp_TdlTypesTest::aTypeInsideItselfIsLeftOut()
{
    QFETCH(QByteArray, types);
    QFETCH(QString, text);
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (const QByteArray& rule : types.split(' ')) {
        SCLElement* doType = AddChild(templates, "DOType", {"id", rule.left(1)});
        SCLElement* daType = AddChild(templates, "DAType", {"id", rule.left(1)});
        for (char type : rule.mid(2)) {
            const QString name = QString(QChar(type)).toLower();
            AddChild(doType, "SDO", {"name", name, "type", QChar(type)});
            AddChild(daType, "BDA", {"name", name, "type", QChar(type), "bType", "Struct"});
        }
        if (rule.endsWith('>')) {
            AddChild(doType, "DA", {"name", "v", "bType", "BOOL"});
            AddChild(daType, "BDA", {"name", "v", "bType", "BOOL"});
        }
    }

    QCOMPARE(ObjectType(At(templates, "DOType")), "true " + text);
    SCLElement* da = AddChild(templates, "DA", {"bType", "Struct", "type", "A"});
    QCOMPARE(AttributeType(da), "true " + text);
}

void SCLHelp_TdlTypesTest::aTypeMayStandTwiceSideBySide()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="A"><SDO name="b" type="B"/><SDO name="c" type="C"/></DOType>)"
                     R"(<DOType id="B"><SDO name="c" type="C"/></DOType>)"
                     R"(<DOType id="C"><DA name="v" bType="BOOL"/></DOType>)"));

    QCOMPARE(ObjectType(At(root, "DataTypeTemplates/DOType")),
             QString("true {(b){(c){(v)Bool}},(c){(v)Bool}}"));
}

void SCLHelp_TdlTypesTest::aChainOfAHundredThousandTypesIsWrittenOut()
{
    constexpr int count = 100000;
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (int i = 0; i < count; ++i) {
        const QString id = QString::number(i);
        const QString next = QString::number(i + 1);
        SCLElement* doType = AddChild(templates, "DOType", {"id", id});
        AddChild(doType, "SDO", {"name", "n", "type", next});
        SCLElement* daType = AddChild(templates, "DAType", {"id", id});
        AddChild(daType, "BDA", {"name", "n", "type", next, "bType", "Struct"});
    }
    const QString last = QString::number(count);
    AddChild(AddChild(templates, "DOType", {"id", last}), "DA", {"name", "v", "bType", "BOOL"});
    AddChild(AddChild(templates, "DAType", {"id", last}), "BDA", {"name", "v", "bType", "BOOL"});

    const QString expected =
        "true " + QString("{(n)").repeated(count) + "{(v)Bool}" + QString(count, '}');
    QVERIFY(ObjectType(At(templates, "DOType")) == expected);
    SCLElement* da = AddChild(templates, "DA", {"bType", "Struct", "type", "0"});
    QVERIFY(AttributeType(da) == expected);
}

void SCLHelp_TdlTypesTest::aTypeOfAMillionMembersIsWrittenOut()
{
    constexpr int count = 1000000;
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    SCLElement* doType = AddChild(templates, "DOType");
    for (int i = 0; i < count; ++i)
        AddChild(doType, "DA", {"name", "a", "bType", "BOOL"});

    QVERIFY(ObjectType(doType) == "true {" + QString("(a)Bool,").repeated(count).chopped(1) + '}');
}

void SCLHelp_TdlTypesTest::aTypeThatDoublesAtEveryLevelIsGivenUp_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("short names") << "a";
    QTest::newRow("long names") << QString(1000000, 'a');
    QTest::newRow("markers") << "%1%2%3";
    QTest::newRow("no name") << "";
}

void SCLHelp_TdlTypesTest::aTypeThatDoublesAtEveryLevelIsGivenUp()
{
    QFETCH(QString, name);
    constexpr int levels = 40;
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (int i = 0; i < levels; ++i) {
        const QString next = QString::number(i + 1);
        SCLElement* doType = AddChild(templates, "DOType", {"id", QString::number(i)});
        SCLElement* daType = AddChild(templates, "DAType", {"id", QString::number(i)});
        for (int k = 0; k < 2; ++k) {
            AddChild(doType, "SDO", {"name", name, "type", next});
            AddChild(daType, "BDA", {"name", name, "type", next, "bType", "Struct"});
        }
    }
    const QString last = QString::number(levels);
    AddChild(AddChild(templates, "DOType", {"id", last}), "DA", {"name", name, "bType", "BOOL"});
    AddChild(AddChild(templates, "DAType", {"id", last}), "BDA", {"name", name, "bType", "BOOL"});

    QCOMPARE(ObjectType(At(templates, "DOType")), QString("false before"));
    SCLElement* da = AddChild(templates, "DA", {"bType", "Struct", "type", "0"});
    QCOMPARE(AttributeType(da), QString("false before"));
}

void SCLHelp_TdlTypesTest::typesThatDoubleWithoutTextAreGivenUp()
{
    constexpr int levels = 40;
    TestControl control;
    SCLElement* templates = AddTemplates(control.Create());
    for (int i = 0; i < levels; ++i) {
        SCLElement* daType = AddChild(templates, "DAType", {"id", QString::number(i)});
        for (int k = 0; k < 2; ++k)
            AddChild(daType, "BDA", {"type", QString::number(i + 1), "bType", "Struct"});
    }
    SCLElement* last = AddChild(templates, "DAType", {"id", QString::number(levels)});
    const QString longText(100000, 'x');
    for (int i = 0; i < 100000; ++i)
        AddChild(last, "BDA", {"type", "none", "bType", "Struct"});
    for (int i = 0; i < 1000; ++i)
        last->FindChild("BDA", i)->SetAttribute("bType", longText, false);

    SCLElement* da = AddChild(templates, "DA", {"bType", "Struct", "type", "0"});
    QCOMPARE(AttributeType(da), QString("false before"));
}

void SCLHelp_TdlTypesTest::aDetachedTypeHasNoStructure()
{
    TestControl control;
    SCLElement da("DA", nullptr, nullptr);
    da.SetAttribute("bType", "Struct", false);
    QCOMPARE(AttributeType(&da), QString("false before"));
    da.SetAttribute("bType", "BOOL", false);
    QCOMPARE(AttributeType(&da), QString("true Bool"));

    SCLElement doType("DOType", nullptr, nullptr);
    AddChild(&doType, "DA", {"name", "a", "bType", "BOOL"});
    QCOMPARE(ObjectType(&doType), QString("true {(a)Bool}"));
    AddChild(&doType, "SDO");
    QCOMPARE(ObjectType(&doType), QString("false {"));
}

void SCLHelp_TdlTypesTest::aDataObjectOfANodeHasAWordAndTellsACT_data()
{
    QTest::addColumn<QString>("doName");
    QTest::addColumn<QString>("daName");
    QTest::addColumn<QString>("result");
    const auto row = [](const char* title, const char* doName, const char* daName,
                        const char* result) {
        QTest::newRow(title) << QString::fromLatin1(doName) << QString::fromLatin1(daName)
                             << QString::fromLatin1(result);
    };
    row("plain", "Op", "general", "true Bool 1");
    row("other class", "Pos", "stVal", "true Bstring2 0");
    row("class in other case", "Low", "v", "true Long 0");
    row("no class", "None", "v", "true Long 0");
    row("path of the attribute", "Pos", "origin.cat", "true Byte 0");
    row("structure", "Pos", "origin", "false  0");
    row("structure without type", "Pos", "lost", "false  0");
    row("no bType", "Pos", "bare", "false before 0");
    row("no word", "Pos", "short", "false  0");
    row("unknown attribute", "Op", "x", "false before 1");
    row("unknown attribute, no class", "None", "x", "false before 0");
    row("attribute path with dot behind", "Pos", "origin.", "false before 0");
    row("no DOI", "Hidden", "v", "false before before");
    row("no DO", "Orphan", "v", "false before before");
    row("DO without DOType", "Untyped", "v", "false before before");
    row("other case", "op", "general", "false before before");

    row("two names", "Wye.phsA", "v", "true Float 1");
    row("two names, unknown", "Wye.phsB", "v", "false before before");
    row("two names, a DA", "Wye.attr", "v", "true Long 0");
    row("two names, no DOType", "Wye.lost", "v", "false before before");
    row("two names, no DOI", "Hidden.phsA", "v", "false before before");
    row("dot behind", "Op.", "general", "true Bool 1");
    row("dot behind, no DOType", "Untyped.", "v", "false before before");
    row("dot in front", ".Op", "general", "false before before");
    row("only a dot", ".", "general", "false before before");

    row("three names, one character", "Wye.s.deep", "v", "true Double 0");
    row("three names, longer", "Wye.sub.deep", "v", "false before before");
    row("four names, one character", "Wye.s.t.last", "v", "true Bool 1");
    row("three names, dot behind", "Wye.s.t.", "v", "true Ubyte 0");
    row("two dots behind", "Wye..", "v", "true Ushort 0");
    row("an empty name is taken as its dot", "Wye..dotted", "v", "true Ulong 1");
    // Of "ssdeep" one character counts, the next one goes with it, and the rest begins a name.
    row("remainder that is not found", "Wye.ssdeep.x", "v", "false before before");
    row("remainder that is found", "Wye.sxt.last", "v", "true Bool 1");
    row("nothing left behind the last dot", "Wye.s.", "v", "true Ostring16 0");
}

void SCLHelp_TdlTypesTest::aDataObjectOfANodeHasAWordAndTellsACT()
{
    QFETCH(QString, doName);
    QFETCH(QString, daName);
    QFETCH(QString, result);
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="N"><DO name="Op" type="ACT"/><DO name="Pos" type="DPC"/>)"
        R"(<DO name="Low" type="low"/><DO name="None" type="none"/><DO name="Hidden" type="WYE"/>)"
        R"(<DO name="Untyped" type="nowhere"/><DO name="Wye" type="WYE"/></LNodeType>)"
        R"(<DOType id="ACT" cdc="ACT"><DA name="general" bType="BOOLEAN"/></DOType>)"
        R"(<DOType id="DPC" cdc="DPC"><DA name="stVal" bType="Dbpos"/>)"
        R"(<DA name="origin" bType="Struct" type="Org"/><DA name="bare"/>)"
        R"(<DA name="lost" bType="Struct"/><DA name="short" bType="INT16"/></DOType>)"
        R"(<DOType id="low" cdc="act"><DA name="v" bType="INT32"/></DOType>)"
        R"(<DOType id="none"><DA name="v" bType="INT32"/></DOType>)"
        R"(<DOType id="WYE" cdc="WYE"><SDO name="phsA" type="CMV"/><SDO name="s" type="S"/>)"
        R"(<SDO name="sub" type="S"/><SDO name="lost" type="nowhere"/><SDO name="." type="D"/>)"
        R"(<DA name="attr" type="none"/></DOType>)"
        R"(<DOType id="CMV" cdc="ACT"><DA name="v" bType="FLOAT32"/></DOType>)"
        R"(<DOType id="S"><SDO name="deep" type="E"/><SDO name="t" type="T"/>)"
        R"(<DA name="v" bType="INT128"/></DOType>)"
        R"(<DOType id="T"><SDO name="last" type="L"/><DA name="v" bType="INT8U"/></DOType>)"
        R"(<DOType id="L" cdc="ACT"><DA name="v" bType="BOOL"/></DOType>)"
        R"(<DOType id="E" cdc="EEE"><DA name="v" bType="FLOAT64"/></DOType>)"
        R"(<DOType id="D"><SDO name="otted" type="U"/><SDO name="dotted" type="V"/>)"
        R"(<DA name="v" bType="INT16U"/></DOType>)"
        R"(<DOType id="U" cdc="ACT"><DA name="v" bType="INT32U"/></DOType>)"
        R"(<DOType id="V" cdc="ACT"><DA name="v" bType="Check"/></DOType>)"
        R"(<DAType id="Org"><BDA name="cat" bType="Enum"/></DAType>)",
        R"(<LN lnType="N"><DOI name="Op"/><DOI name="Pos"/><DOI name="Low"/><DOI name="None"/>)"
        R"(<DOI name="Orphan"/><DOI name="Untyped"/><DOI name="Wye"/></LN>)"));

    QString tdlType = QStringLiteral("before");
    QString act = QStringLiteral("before");
    const bool formed = SCLHelp::GetTDLTypeAndACT(At(root, "LN"), doName, daName, tdlType, act);
    QCOMPARE((formed ? "true " : "false ") + tdlType + ' ' + act, result);

    QString plainType = QStringLiteral("before");
    QString plainAct = QStringLiteral("before");
    QCOMPARE(Plain::TypeAndACT(At(root, "LN"), doName, daName, plainType, plainAct), formed);
    QCOMPARE(tdlType, plainType);
    QCOMPARE(act, plainAct);
}

void SCLHelp_TdlTypesTest::withoutNodeOrNamesNothingIsTold()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="N"><DO type="T"/></LNodeType><DOType id="T"><DA bType="BOOL"/></DOType>)",
        R"(<LN lnType="N"><DOI/></LN>)"));
    QString tdlType = QStringLiteral("before");
    QString act = QStringLiteral("before");

    QVERIFY(!SCLHelp::GetTDLTypeAndACT(nullptr, "Op", "general", tdlType, act));
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(At(root, "LN"), "", "general", tdlType, act));
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(At(root, "LN"), ".", "", tdlType, act));
    QCOMPARE(tdlType + act, QString("beforebefore"));
    // Empty names are found all the same where a dot goes with them.
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(At(root, "LN"), ".", "general", tdlType, act));
    QCOMPARE(tdlType + act, QString("before0"));
}

void SCLHelp_TdlTypesTest::aNodeOutsideADocumentTellsNothing()
{
    TestControl control;
    SCLElement ln("LN", nullptr, nullptr);
    AddChild(&ln, "DOI", {"name", "Op"});
    QString tdlType;
    QString act;
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(&ln, "Op", "general", tdlType, act));
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(&ln, "Op.a", "general", tdlType, act));
    QVERIFY(tdlType.isNull() && act.isNull());
}

void SCLHelp_TdlTypesTest::aNameOfAMillionCirclesIsFollowed()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(
        R"(<LNodeType id="N"><DO name="a" type="T"/></LNodeType>)"
        R"(<DOType id="T" cdc="ACT"><SDO name="a" type="T"/><DA name="v" bType="BOOL"/></DOType>)",
        R"(<LN lnType="N"><DOI name="a"/></LN>)"));
    QString tdlType;
    QString act;
    QVERIFY(SCLHelp::GetTDLTypeAndACT(At(root, "LN"), QString("a.").repeated(1000000) + 'a', "v",
                                      tdlType, act));
    QCOMPARE(tdlType + act, QString("Bool1"));
    QVERIFY(!SCLHelp::GetTDLTypeAndACT(At(root, "LN"),
                                       "a." + QString(1000000, 'a') + ".a" + QString(1000000, 'b'),
                                       "v", tdlType, act));
}

void SCLHelp_TdlTypesTest::textsAgreeWithPlainRecursions()
{
    RandomTemplates random(3);
    TestControl control;
    int structures = 0;
    int told = 0;
    int words = 0;
    for (int round = 0; round < 3000; ++round) {
        SCLDocument* document = control.Create();
        SCLElement* root = document->CreateRoot(QStringLiteral("SCL"));
        random.Fill(root);
        random.RemoveCircles(root);

        Elements all = root->GetChildList();
        for (int i = 0; i < all.size(); ++i)
            all += all.at(i)->GetChildList();
        for (SCLElement* element : all) {
            QString text = QStringLiteral("before");
            QString plain = text;
            QCOMPARE(SCLHelp::GetTDLTypeFromDA(element, text),
                     Plain::AttributeType(element, plain));
            QCOMPARE(text, plain);
            structures += text.contains(QLatin1String("){("));
            text = plain = QStringLiteral("before");
            // A DAType is no data object.
            SCLElement* doType = element->GetTag() == "DAType" ? root : element;
            QCOMPARE(SCLHelp::GetTDLTypeFromDOType(doType, text), Plain::ObjectType(doType, plain));
            QCOMPARE(text, plain);
            structures += text.contains(QLatin1String("){("));
        }
        const Elements nodes = root->FindChildByType("LN", true);
        for (SCLElement* node : nodes) {
            for (int i = 0; i < 100; ++i) {
                const QString doName = random.Path();
                const QString daName = i % 2 == 0 ? random.Name() : random.Path();
                QString text = QStringLiteral("before");
                QString act = text;
                QString plain = text;
                QString plainAct = text;
                const bool formed = SCLHelp::GetTDLTypeAndACT(node, doName, daName, text, act);
                QCOMPARE(formed, Plain::TypeAndACT(node, doName, daName, plain, plainAct));
                QCOMPARE(text, plain);
                QCOMPARE(act, plainAct);
                told += act != QLatin1String("before");
                words += formed;
            }
        }
        control->CloseDocument(document, false);
    }
    QVERIFY(structures > 100);
    QVERIFY(told > 300);
    QVERIFY(words > 20);
}

void SCLHelp_TdlTypesTest::nothingIsChanged()
{
    TestControl control;
    RandomTemplates random(4);
    SCLDocument* document = control.Create();
    SCLElement* root = document->CreateRoot(QStringLiteral("SCL"));
    random.Fill(root);
    document->SetModified(false, false);
    const QString before = ElementText(root);
    SignalLog log(document);

    const Elements types = At(root, "DataTypeTemplates")->GetChildList();
    for (SCLElement* type : types) {
        QString text;
        SCLHelp::GetTDLTypeFromDOType(type, text);
        SCLHelp::GetTDLTypeFromDA(type, text);
        SCLHelp::GetTDLTypeAndACT(type, "a.b.c", "a.b", text, text);
    }
    QVERIFY(!types.isEmpty());
    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(!document->GetModified());
    QCOMPARE(ElementText(root), before);
}

QTEST_MAIN(SCLHelp_TdlTypesTest)
#include "SCLHelp_TdlTypesTest.moc"
