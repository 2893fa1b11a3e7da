// SPDX-License-Identifier: Apache-2.0
#include "apps/command/ElementPaths.h"
#include "apps/command/ElementPath.h"
#include "apps/command/TreeWalk.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>

#include <QtTest>

using namespace Corvane;
using Corvane::Command::ElementPath;
using Corvane::Command::ElementPaths;
using Corvane::Command::TreeWalk;

class ElementPathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPathIsTheOneOfASingleElement();
    void aPathOfTheGreatestLengthIsGiven();
    void aLongerPathIsEmpty();

private:
    SCLDocControl m_control;
};

void ElementPathsTest::eachPathIsTheOneOfASingleElement()
{
    SCLDocument* document =
        m_control.OpenDocument(QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd"), false);
    QVERIFY(document != nullptr);
    ElementPaths paths;
    int visited = 0;

    TreeWalk walk(document->Root());
    while (SCLElement* element = walk.Next()) {
        QCOMPARE(paths.Of(element), ElementPath::Of(element));
        ++visited;
    }

    QCOMPARE(visited, document->Root()->GetChildCount(true) + 1);
}

void ElementPathsTest::aPathOfTheGreatestLengthIsGiven()
{
    SCLElement root(QStringLiteral("SCL"), nullptr, nullptr);
    SCLElement* child =
        root.CreateChild(QString(ElementPaths::longest - 4, QLatin1Char('x')), -1, false);
    ElementPaths paths;

    QCOMPARE(paths.Of(child), ElementPath::Of(child));
    QCOMPARE(static_cast<int>(paths.Of(child).size()), ElementPaths::longest);
}

void ElementPathsTest::aLongerPathIsEmpty()
{
    SCLElement root(QStringLiteral("SCL"), nullptr, nullptr);
    SCLElement* child =
        root.CreateChild(QString(ElementPaths::longest - 3, QLatin1Char('x')), -1, false);
    SCLElement* grandchild = child->CreateChild(QStringLiteral("a"), -1, false);
    ElementPaths paths;

    QCOMPARE(paths.Of(grandchild), QString());
    QCOMPARE(paths.Of(child), QString());
    QCOMPARE(paths.Of(&root), QStringLiteral("SCL"));
}

QTEST_GUILESS_MAIN(ElementPathsTest)
#include "ElementPathsTest.moc"
