// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcTree.h>

#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/TestControl.h"

#include <corvane/crc/CrcContent.h>
#include <corvane/elements/SCLElement.h>

#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::CrcElement;
using Corvane::Internal::CrcTree;

class CrcTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAnIedThereIsNoTree();
    void withoutConnectionThereIsNoTree();
    void theTreeIsWhatTheGeneratorRenders();
    void theRootHasTheAttributesOfTheIedInTheirOrder();
    void theTreeOutlivesItsDocument();
};

void CrcTreeTest::withoutAnIedThereIsNoTree()
{
    const CrcTree tree(nullptr);

    QVERIFY(tree.Root() == nullptr);
    QCOMPARE(tree.Result(), CrcGenerator::CrcFailed);
}

void CrcTreeTest::withoutConnectionThereIsNoTree()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED name='A'/></SCL>");

    const CrcTree tree(root->GetFirstChild("IED"));

    QVERIFY(tree.Root() == nullptr);
    QCOMPARE(tree.Result(), CrcGenerator::CrcNoConnection);
}

void CrcTreeTest::theTreeIsWhatTheGeneratorRenders()
{
    TestControl control;
    SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");
    const CrcRun run(ied);
    QByteArray content;

    const CrcTree tree(ied);

    QCOMPARE(Internal::CanonicalCrc(tree.Root(), &content), run.crc);
    QCOMPARE(content, run.canonical);
    QCOMPARE(tree.Result(), run.result);
}

void CrcTreeTest::theRootHasTheAttributesOfTheIedInTheirOrder()
{
    TestControl control;
    SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");

    const CrcTree tree(ied);

    QStringList attributes;
    for (const Internal::CrcAttribute* attribute : tree.Root()->attributes)
        attributes.append(attribute->name + '=' + attribute->value + ' ' +
                          QString::number(attribute->generatorType));
    QCOMPARE(attributes.join(", "), QString("configVersion=V1 1, desc=the publisher 1, "
                                            "manufacturer=M1 1, name=P 2, type=T1 1"));
    QCOMPARE(tree.Root()->children.first()->name, QString("GOOSEPUB"));
}

void CrcTreeTest::theTreeOutlivesItsDocument()
{
    std::unique_ptr<CrcTree> tree;
    unsigned int crc = 0;
    {
        TestControl control;
        SCLElement* ied = control.OpenRoot(CrcStationText())->GetFirstChild("IED");
        crc = CrcRun(ied).crc;
        tree = std::make_unique<CrcTree>(ied);
    }

    QCOMPARE(Internal::CanonicalCrc(tree->Root(), nullptr), crc);
}

QTEST_MAIN(CrcTreeTest)
#include "CrcTreeTest.moc"
