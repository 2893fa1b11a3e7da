// SPDX-License-Identifier: Apache-2.0
// A host without widgets: a command, a service, or one that draws its windows by other means.
#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

class GuilessHostTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thisHostHasNoWidgets();
    void documentsOpenSaveAndClose();
    void theQuestionForAVersionIsLeftOut();
};

void GuilessHostTest::thisHostHasNoWidgets()
{
    QVERIFY(QCoreApplication::instance());
    QVERIFY(!qobject_cast<QApplication*>(QCoreApplication::instance()));
}

void GuilessHostTest::documentsOpenSaveAndClose()
{
    TestControl control;
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(control.Open("<SCL><IED name=\"A\"/></SCL>")->SaveAs(path, false, false));
    SCLDocument* document = control->OpenDocument(path, true);
    QVERIFY(document);
    QCOMPARE(At(document->Root(), "IED")->GetAttribute("name"), QString("A"));
    QVERIFY(control->CloseDocument(document, true));
}

void GuilessHostTest::theQuestionForAVersionIsLeftOut()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><Header/></SCL>");
    const QString path = control.Folder().Path("out.scd");
    QVERIFY(document->SaveAs(path, true, true));
    QCOMPARE(ReadFile(path),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCL>\n  <Header "
                        "toolID=\"TALVEN-CFG\" nameStructure=\"IEDName\" id=\"out\"/>\n</SCL>\n"));
}

namespace
{

template <typename Application>
int Run(int argc, char** argv)
{
    const Application application(argc, argv);
    GuilessHostTest test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const int failures = Run<QCoreApplication>(argc, argv);
    return failures + Run<QGuiApplication>(argc, argv);
}

#include "GuilessHostTest.moc"
