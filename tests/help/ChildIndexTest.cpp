// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/help/ChildIndex.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::ChildIndex;

class ChildIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itFindsWhatFindChildFinds_data();
    void itFindsWhatFindChildFinds();
    void itTellsParentsAndTagsApart();
};

void ChildIndexTest::itFindsWhatFindChildFinds_data()
{
    QTest::addColumn<int>("children");
    for (const int children : {0, 1, 15, 16, 200})
        QTest::newRow(qPrintable(QString("%1 children").arg(children))) << children;
}

void ChildIndexTest::itFindsWhatFindChildFinds()
{
    QFETCH(const int, children);
    const TestControl control;
    SCLElement parent("LNodeType", nullptr, nullptr);
    for (int i = 0; i < children; ++i) {
        SCLElement* child = parent.CreateChild("DO", -1, false);
        if (i % 7 != 0)
            child->SetAttribute("name", QString::number(i % 50), false);
        parent.CreateChild("DA", -1, false)->SetAttribute("name", QString::number(i), false);
    }
    ChildIndex index;
    for (int round = 0; round < 2; ++round) {
        for (int i = -1; i < 60; ++i) {
            const QString name = i < 0 ? QString("") : QString::number(i);
            QVERIFY(index.Find(&parent, "DO", "name", name) ==
                    parent.FindChild("DO", "name", name, false));
            QVERIFY(index.Find(&parent, "SDO", "name", name) == nullptr);
        }
    }
}

void ChildIndexTest::itTellsParentsAndTagsApart()
{
    const TestControl control;
    SCLElement first("DOType", nullptr, nullptr);
    SCLElement second("DOType", nullptr, nullptr);
    for (SCLElement* parent : {&first, &second}) {
        for (int i = 0; i < 100; ++i) {
            parent->CreateChild("DA", -1, false)->SetAttribute("name", QString::number(i), false);
            parent->CreateChild("SDO", -1, false)->SetAttribute("name", QString::number(i), false);
        }
    }
    ChildIndex index;
    QVERIFY(index.Find(&first, "DA", "name", "7") == first.FindChild("DA", 7));
    QVERIFY(index.Find(&second, "DA", "name", "7") == second.FindChild("DA", 7));
    QVERIFY(index.Find(&first, "SDO", "name", "7") == first.FindChild("SDO", 7));
}

QTEST_MAIN(ChildIndexTest)
#include "ChildIndexTest.moc"
