// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/TemplateTree.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/TemplateIndex.h>

#include <QObject>
#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Test;
using namespace Corvane::Internal;

namespace
{

const QString g_type = QStringLiteral("type");
const QString g_doType = QStringLiteral("DOType");
const QString g_daType = QStringLiteral("DAType");

// Enough lookups that no index could put its table off any longer.
constexpr int g_many = 100;

QByteArray NumberedTypes(int count)
{
    QByteArray types;
    for (int i = 0; i < count; ++i)
        types += "<DOType id=\"" + QByteArray::number(i) + "\"/>";
    return types;
}

} // namespace

class TemplateIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void manyLookupsFindWhatOneFinds();
    void ofEqualIdsTheFirstWinsHoweverOftenItIsAskedFor();
    void aMissingAndAnEmptyIdAreTheSame();
    void tagsHaveTablesOfTheirOwn();
    void anotherDocumentStartsAnew();
    void withoutElementOrDocumentOrRootOrTemplatesThereIsNone();
    void aMillionLookupsAmongManyTypesAreQuick();
};

void TemplateIndexTest::manyLookupsFindWhatOneFinds()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(NumberedTypes(20)));
    std::mt19937 engine(1);
    TemplateIndex index;
    for (int i = 0; i < 1000; ++i) {
        SCLElement* element = AddChild(root, "SDO", {"type", QString::number(engine() % 30)});
        SCLElement* found = index.Follow(element, g_type, g_doType);
        QCOMPARE(found, FollowReference(element, g_type, g_doType));
        QCOMPARE(found, Plain::TypeOf(element, g_type, g_doType));
    }
}

void TemplateIndexTest::ofEqualIdsTheFirstWinsHoweverOftenItIsAskedFor()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot(TemplateFile(R"(<DOType id="a"/><DOType id="x"/><DOType id="x"/>)"));
    SCLElement* element = AddChild(root, "SDO", {"type", "x"});
    TemplateIndex index;
    for (int i = 0; i < g_many; ++i)
        QCOMPARE(index.Follow(element, g_type, g_doType), At(root, "DataTypeTemplates/DOType[1]"));
}

void TemplateIndexTest::aMissingAndAnEmptyIdAreTheSame()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        TemplateFile(R"(<DOType id="a"/><DOType/><DOType id=""/><DAType id=""/><DAType/>)"));
    SCLElement* missing = AddChild(root, "SDO");
    SCLElement* empty = AddChild(root, "SDO", {"type", ""});
    TemplateIndex index;
    for (int i = 0; i < g_many; ++i) {
        for (SCLElement* element : {missing, empty}) {
            QCOMPARE(index.Follow(element, g_type, g_doType),
                     At(root, "DataTypeTemplates/DOType[1]"));
            QCOMPARE(index.Follow(element, g_type, g_daType),
                     At(root, "DataTypeTemplates/DAType[0]"));
        }
    }
}

void TemplateIndexTest::tagsHaveTablesOfTheirOwn()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot(TemplateFile(R"(<DOType id="x"/><DAType id="x"/><DOType id="o"/>)"));
    SCLElement* both = AddChild(root, "DA", {"type", "x", "other", "o"});
    TemplateIndex index;
    for (int i = 0; i < g_many; ++i) {
        QCOMPARE(IdText(index.Follow(both, g_type, g_doType)), QString("DOType x"));
        QCOMPARE(IdText(index.Follow(both, g_type, g_daType)), QString("DAType x"));
        QCOMPARE(IdText(index.Follow(both, "other", g_doType)), QString("DOType o"));
        QVERIFY(index.Follow(both, "other", g_daType) == nullptr);
        QVERIFY(index.Follow(both, g_type, "EnumType") == nullptr);
    }
}

void TemplateIndexTest::anotherDocumentStartsAnew()
{
    TestControl control;
    SCLElement* first = control.OpenRoot(TemplateFile(NumberedTypes(3)));
    SCLElement* second = control.OpenRoot(TemplateFile(NumberedTypes(3)));
    TemplateIndex index;
    for (int round = 0; round < 4; ++round) {
        for (SCLElement* root : {first, second}) {
            SCLElement* element = AddChild(root, "SDO", {"type", "2"});
            for (int i = 0; i < g_many; ++i)
                QCOMPARE(index.Follow(element, g_type, g_doType),
                         At(root, "DataTypeTemplates/DOType[2]"));
        }
    }
}

void TemplateIndexTest::withoutElementOrDocumentOrRootOrTemplatesThereIsNone()
{
    TestControl control;
    SCLDocument empty;
    SCLElement withoutRoot("SDO", &empty, nullptr);
    SCLElement withoutDocument("SDO", nullptr, nullptr);
    SCLElement* withoutTemplates = control.OpenRoot("<SCL><DOType/></SCL>");
    TemplateIndex index;
    for (int i = 0; i < g_many; ++i) {
        for (SCLElement* element : {static_cast<SCLElement*>(nullptr), &withoutDocument,
                                    &withoutRoot, withoutTemplates}) {
            QVERIFY(index.Follow(element, g_type, g_doType) == nullptr);
            QVERIFY(FollowReference(element, g_type, g_doType) == nullptr);
        }
    }
}

void TemplateIndexTest::aMillionLookupsAmongManyTypesAreQuick()
{
    constexpr int types = 50000;
    TestControl control;
    SCLElement* root = control.OpenRoot(TemplateFile(NumberedTypes(types)));
    SCLElement* last = At(root, "DataTypeTemplates")->FindChild("DOType", types - 1);
    SCLElement* element = AddChild(root, "SDO", {"type", QString::number(types - 1)});
    TemplateIndex index;
    int found = 0;
    for (int i = 0; i < 1000000; ++i)
        found += index.Follow(element, g_type, g_doType) == last;
    QCOMPARE(found, 1000000);
}

QTEST_MAIN(TemplateIndexTest)
#include "TemplateIndexTest.moc"
