// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/ImageBytes.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLBinaryCheck.h>

#include <QCryptographicHash>
#include <QFuture>
#include <QTest>
#include <QTimer>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

QByteArray SampleStation()
{
    return ReadFile(QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd"));
}

/// What the task of an operation shows: when it is announced, while events run, and at the end.
class TaskWatch
{
public:
    explicit TaskWatch(SCLDocument* document)
    {
        QObject::connect(document, &SCLDocument::sigFutaskTaskPrepared, &m_context,
                         [this](const QFuture<QString>& future, const QString&) {
                             m_future = future;
                             m_wasStarted = future.isStarted();
                             QTimer::singleShot(0, &m_context, [this] {
                                 ++m_runs;
                                 m_valueAtEvents = m_future.progressValue();
                             });
                         });
    }

    QString Text() const
    {
        return QStringLiteral("started early %1; events %2, at %3; end %4 of %5..%6, finished %7")
            .arg(m_wasStarted)
            .arg(m_runs)
            .arg(m_valueAtEvents)
            .arg(m_future.progressValue())
            .arg(m_future.progressMinimum())
            .arg(m_future.progressMaximum())
            .arg(m_future.isFinished());
    }

private:
    QFuture<QString> m_future;
    QObject m_context;
    bool m_wasStarted = true;
    int m_runs = 0;
    int m_valueAtEvents = -1;
};

} // namespace

class SCLDocument_BinaryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readingReplacesTheTree();
    void everyElementHasTheDocumentAndItsParent();
    void anEmptyArrayLeavesARootWithoutTagAndChildren();
    void theImageOfASubtreeLoadsAsADocument();
    void theFileNameStays();

    void writingLeavesTheModifiedStateAlone();
    void readingMarksModifiedIfThereIsAnything_data();
    void readingMarksModifiedIfThereIsAnything();
    void signalsOfAReadComeInOrder();
    void signalsOfAWriteComeInOrder();
    void theOldRootIsGoneWhenTheTaskIsAnnounced();

    void aWriteMovesToOneAndThenToTheEnd();
    void aReadMovesToTheSizeOfTheBytes();
    void aDocumentWithoutRootWritesNothing();

    void theSampleStationReadsBackWhole();
    void theSampleStationHasOneImageInEveryBuild();
    void aHundredThousandLevels();
};

void SCLDocument_BinaryTest::readingReplacesTheTree()
{
    TestControl control;
    const QByteArray image = control.Open("<SCL><IED name='B'/></SCL>")->WriteBinary();
    SCLDocument* document = control.Open("<SCL old='1'><Header/><IED name='A'/></SCL>");

    document->ReadBinary(image);

    QCOMPARE(ElementText(document->Root()), QString("<SCL><IED name=\"B\"/></SCL>"));
}

void SCLDocument_BinaryTest::everyElementHasTheDocumentAndItsParent()
{
    TestControl control;
    const QByteArray image =
        control.Open("<SCL><IED><LN/><LN/></IED><Header/></SCL>")->WriteBinary();
    SCLDocument* document = control.Create();

    document->ReadBinary(image);

    SCLElement* root = document->Root();
    QVERIFY(root->GetParent("") == nullptr);
    QList<SCLElement*> elements = {root};
    for (int i = 0; i < elements.size(); ++i) {
        QCOMPARE(elements[i]->GetDocument(), document);
        const QList<SCLElement*> children = elements[i]->GetChildList();
        for (SCLElement* child : children)
            QCOMPARE(child->GetParent(""), elements[i]);
        elements += children;
    }
    QCOMPARE(elements.size(), 5);
}

void SCLDocument_BinaryTest::anEmptyArrayLeavesARootWithoutTagAndChildren()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL a='1'><IED/></SCL>");

    document->ReadBinary(QByteArray());

    QVERIFY(document->Root());
    QCOMPARE(document->Root()->GetTag(), QString());
    QCOMPARE(document->Root()->GetChildCount(true), 0);
    QCOMPARE(document->Root()->GetDocument(), document);
}

void SCLDocument_BinaryTest::theImageOfASubtreeLoadsAsADocument()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><Private type='t'><x:A/>text</Private></SCL>");
    SCLDocument* document = control.Create();

    document->ReadBinary(root->GetFirstChild("Private")->WriteToBinary());

    QCOMPARE(ElementText(document->Root()), QString("<Private type=\"t\">text<x:A/></Private>"));
}

void SCLDocument_BinaryTest::theFileNameStays()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const QString name = document->GetFileName();

    document->ReadBinary(Head("SCL", 1) + Head("IED", 0));

    QCOMPARE(document->GetFileName(), name);
}

void SCLDocument_BinaryTest::writingLeavesTheModifiedStateAlone()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");

    document->WriteBinary();
    QVERIFY(!document->GetModified());

    document->SetModified(true, false);
    document->WriteBinary();
    QVERIFY(document->GetModified());
}

void SCLDocument_BinaryTest::readingMarksModifiedIfThereIsAnything_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<bool>("isModified");
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("a tag") << Head("SCL", 0) << false;
    QTest::newRow("an attribute") << Text("SCL") + Text(QString()) + Word(1) + Text("a") +
                                         Text("") + Word(0)
                                  << true;
    QTest::newRow("a child") << Head("SCL", 1) + Head("IED", 0) << true;
}

void SCLDocument_BinaryTest::readingMarksModifiedIfThereIsAnything()
{
    QFETCH(const QByteArray, image);
    QFETCH(const bool, isModified);
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");

    document->ReadBinary(image);

    QCOMPARE(document->GetModified(), isModified);
}

void SCLDocument_BinaryTest::signalsOfAReadComeInOrder()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    SignalLog log(document);
    log.Watch(control.Get());

    document->ReadBinary(Head("SCL", 2) + Head("IED", 0) + Head("IED", 0));

    QCOMPARE(log.Lines(), QStringList({"control taskPrepared \"Parsing\"",
                                       "taskPrepared \"Parsing\"", "modifiedStateChanged true"}));
}

void SCLDocument_BinaryTest::signalsOfAWriteComeInOrder()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    SignalLog log(document);
    log.Watch(control.Get());

    document->WriteBinary();

    QCOMPARE(log.Lines(),
             QStringList({"control taskPrepared \"Saving\"", "taskPrepared \"Saving\""}));
}

void SCLDocument_BinaryTest::theOldRootIsGoneWhenTheTaskIsAnnounced()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED/></SCL>");
    QList<SCLElement*> roots;
    connect(document, &SCLDocument::sigFutaskTaskPrepared, this,
            [&roots, document] { roots.append(document->Root()); });

    document->ReadBinary(Head("SCL", 0));

    QCOMPARE(roots, QList<SCLElement*>{nullptr});
}

void SCLDocument_BinaryTest::aWriteMovesToOneAndThenToTheEnd()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><LN/></IED><IED/></SCL>");
    const TaskWatch watch(document);

    document->WriteBinary();

    QCOMPARE(watch.Text(), QString("started early 0; events 1, at 1; end 3 of 0..3, finished 1"));
}

void SCLDocument_BinaryTest::aReadMovesToTheSizeOfTheBytes()
{
    TestControl control;
    SCLDocument* document = control.Create();
    const TaskWatch watch(document);

    document->ReadBinary(Head("SCL", 0));

    QCOMPARE(watch.Text(), QString("started early 0; events 1, at 0; end 22 of 0..22, finished 1"));
}

void SCLDocument_BinaryTest::aDocumentWithoutRootWritesNothing()
{
    const TestControl control;
    SCLDocument document;
    SignalLog log(&document);

    QCOMPARE(document.WriteBinary(), QByteArray());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocument_BinaryTest::theSampleStationReadsBackWhole()
{
    TestControl control;
    SCLDocument* written = control.Open(SampleStation());
    SCLDocument* read = control.Create();

    const QByteArray image = written->WriteBinary();
    read->ReadBinary(image);

    QVERIFY(SCLBinaryCheck::Of(image).IsWhole());
    QCOMPARE(ElementText(read->Root()), ElementText(written->Root()));
    QVERIFY(read->WriteBinary() == image);
}

// Whatever version of Qt the library is built with.
void SCLDocument_BinaryTest::theSampleStationHasOneImageInEveryBuild()
{
    TestControl control;

    const QByteArray image = control.Open(SampleStation())->WriteBinary();

    QCOMPARE(QCryptographicHash::hash(image, QCryptographicHash::Sha256).toHex(),
             QByteArray("44b0d0e736142b9a70176df28a54df0d5b1256eae38489fc667331ec2e3d3b50"));
}

void SCLDocument_BinaryTest::aHundredThousandLevels()
{
    constexpr int levels = 100000;
    TestControl control;
    SCLDocument* written = control.Create();
    SCLElement* element = written->Root();
    for (int i = 0; i < levels; ++i)
        element = element->CreateChild("IED", -1, false);
    const int below = written->Root()->GetChildCount(true);

    const QByteArray image = written->WriteBinary();
    SCLDocument* read = control.Create();
    read->ReadBinary(image);

    QVERIFY(SCLBinaryCheck::Of(image).IsWhole());
    QVERIFY(below >= levels);
    QCOMPARE(read->Root()->GetChildCount(true), below);
    QVERIFY(read->WriteBinary() == image);
    control->CloseDocument(read, false);
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>{written});
}

QTEST_GUILESS_MAIN(SCLDocument_BinaryTest)
#include "SCLDocument_BinaryTest.moc"
