// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/ImageBytes.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLNamePool.h>

#include <QDataStream>
#include <QFutureInterface>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Owned = std::unique_ptr<SCLElement>;

Owned New(const QString& tag)
{
    return Owned(new SCLElement(tag, nullptr, nullptr));
}

Owned Read(const QByteArray& image)
{
    Owned element = New("fresh");
    element->ReadFromBinary(image);
    return element;
}

// Every kind of field: a null, an empty and a set value, characters of one and of two units.
Owned Varied()
{
    Owned top = New("SCL");
    top->SetAttribute("z", QString::fromUtf8("\xE7\xAB\x99"), false);
    top->SetAttribute("a", "", false);
    SCLElement* first = top->CreateChild("IED", -1, false);
    first->SetAttribute("name", "A", false);
    first->SetValue(QString::fromUtf8("\xF0\x9F\x94\x8C"), false);
    top->CreateChild("Header", -1, false);
    top->CreateChild("IED", -1, false);
    return top;
}

// A device that gives and takes bytes in turn, so that nothing can look into it.
class Pipe : public QIODevice
{
public:
    Pipe() { open(ReadWrite | Unbuffered); }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_bytes.size(); }
    bool atEnd() const override { return m_bytes.isEmpty(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const auto size = qMin<qint64>(maxSize, m_bytes.size());
        std::copy_n(m_bytes.constData(), size, data);
        m_bytes.remove(0, static_cast<int>(size));
        return size;
    }
    qint64 writeData(const char* data, qint64 size) override
    {
        m_bytes.append(data, static_cast<int>(size));
        return size;
    }

private:
    QByteArray m_bytes;
};

} // namespace

class SCLElement_BinaryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBareElementTakesTwentyTwoBytes();
    void everyFieldHasItsBytes();
    void whatIsWrittenIsReadBack();
    void neverSetAndEmptyValuesStayApart();
    void groupsStandInAscendingTagIds();
    void theReaderGroupsByItsOwnIds();
    void readingMergesIntoWhatIsThere();
    void repeatedNamesCollapseToTheFirstPlace();
    void attributesWithoutANameAreKept();
    void manyAttributesOfFewNamesAreMerged();
    void readingNeedsNoDocument();
    void readingMarksModifiedAndSignalsNothingElse();
    void anUnchangedAttributeMarksNothing();
    void childrenGetTheDocumentAndTheirParent();
    void theEmptyTagIsPooled();
    void aFullPoolLosesNamesOnly();
    void recordsMayFollowOneAnother();
    void anyDeviceServes();
    void theByteOrderIsThatOfTheStream();
    void progressMovesOnceWhenWriting();
    void progressIsThePositionWhenReading();
    void eventsRunOnlyWithProgress();
    void nothingReadsAsAnEmptyElement();
    void aCutImageGivesWhatIsThere();
    void promisedChildrenThatFitAreMade();
    void countsThatCannotBeEndWithTheBytes_data();
    void countsThatCannotBeEndWithTheBytes();
    void lengthsThatLieAllocateNothing_data();
    void lengthsThatLieAllocateNothing();
    void promisesOfAllLevelsTogetherAreBounded();
    void aMillionLevels();
};

void SCLElement_BinaryTest::aBareElementTakesTwentyTwoBytes()
{
    const TestControl control;

    QCOMPARE(New("SCL")->WriteToBinary().toHex(' '),
             QByteArray("00 00 00 06 00 53 00 43 00 4c ff ff ff ff 00 00 00 00 00 00 00 00"));
}

void SCLElement_BinaryTest::everyFieldHasItsBytes()
{
    const TestControl control;
    New("IED");

    QCOMPARE(Varied()->WriteToBinary().toHex(' '),
             QByteArray("00 00 00 06 00 53 00 43 00 4c ff ff ff ff " // SCL
                        "00 00 00 02 "
                        "00 00 00 02 00 7a 00 00 00 02 7a d9 "
                        "00 00 00 02 00 61 00 00 00 00 "
                        "00 00 00 03 "
                        "00 00 00 06 00 49 00 45 00 44 00 00 00 04 d8 3d dd 0c " // IED
                        "00 00 00 01 "
                        "00 00 00 08 00 6e 00 61 00 6d 00 65 00 00 00 02 00 41 "
                        "00 00 00 00 "
                        "00 00 00 06 00 49 00 45 00 44 ff ff ff ff 00 00 00 00 00 00 00 00 " // IED
                        "00 00 00 0c 00 48 00 65 00 61 00 64 00 65 00 72 ff ff ff ff " // Header
                        "00 00 00 00 00 00 00 00"));
}

void SCLElement_BinaryTest::whatIsWrittenIsReadBack()
{
    const TestControl control;
    const Owned written = Varied();

    const Owned read = Read(written->WriteToBinary());

    QCOMPARE(ElementText(read.get()), ElementText(written.get()));
    QCOMPARE(read->WriteToBinary(), written->WriteToBinary());
}

void SCLElement_BinaryTest::neverSetAndEmptyValuesStayApart()
{
    const TestControl control;
    const Owned top = New("T");
    top->CreateChild("A", -1, false);
    SCLElement* set = top->CreateChild("B", -1, false);
    set->SetValue("x", false);
    set->SetValue("", false);
    top->SetAttribute("null", QString(), false);
    top->SetAttribute("empty", "", false);

    const Owned read = Read(top->WriteToBinary());

    QCOMPARE(Quoted(read->FindChild("A", 0)->GetValue()), QString("null"));
    QCOMPARE(Quoted(read->FindChild("B", 0)->GetValue()), QString("\"\""));
    QCOMPARE(Quoted(read->GetAttribute("null")), QString("null"));
    QCOMPARE(Quoted(read->GetAttribute("empty")), QString("\"\""));
}

void SCLElement_BinaryTest::groupsStandInAscendingTagIds()
{
    const TestControl control;
    New("IED");
    New("Header");
    const Owned top = New("SCL");
    for (const char* tag : {"Header", "IED", "Header"})
        top->CreateChild(tag, -1, false);

    QCOMPARE(top->WriteToBinary(),
             Head("SCL", 3) + Head("IED", 0) + Head("Header", 0) + Head("Header", 0));
}

void SCLElement_BinaryTest::theReaderGroupsByItsOwnIds()
{
    const TestControl control;
    New("B");
    New("A");

    const Owned read =
        Read(Head("T", 3) + Head("A", 1) + Head("x", 0) + Head("B", 0) + Head("A", 0));

    QCOMPARE(ElementText(read.get()), QString("<T><B/><A><x/></A><A/></T>"));
}

void SCLElement_BinaryTest::readingMergesIntoWhatIsThere()
{
    TestControl control;
    SCLElement* target = control.OpenRoot("<SCL a='1' b='2'>old<IED name='X'/><Header/></SCL>");
    const Owned source = New("Other");
    source->SetValue("new", false);
    source->SetAttribute("c", "3", false);
    source->SetAttribute("a", "9", false);
    source->CreateChild("IED", -1, false)->SetAttribute("name", "Y", false);
    SCLElement* kept = target->FindChild("IED", 0);

    target->ReadFromBinary(source->WriteToBinary());

    QCOMPARE(ElementText(target),
             QString("<Other a=\"9\" b=\"2\" c=\"3\">new<IED name=\"X\"/><IED name=\"Y\"/>"
                     "<Header/></Other>"));
    QCOMPARE(target->FindChild("IED", 0), kept);
}

void SCLElement_BinaryTest::repeatedNamesCollapseToTheFirstPlace()
{
    const TestControl control;
    const Owned source = New("T");
    source->SetAttributeList({"a", "b", "a", "b"}, {"1", "2", "3", "4"});

    QCOMPARE(ElementText(Read(source->WriteToBinary()).get()), QString("<T a=\"3\" b=\"4\"/>"));

    const Owned target = New("T");
    target->SetAttributeList({"b", "b"}, {"x", "y"});
    target->ReadFromBinary(source->WriteToBinary());
    QCOMPARE(ElementText(target.get()), QString("<T b=\"4\" b=\"y\" a=\"3\"/>"));
}

void SCLElement_BinaryTest::attributesWithoutANameAreKept()
{
    const TestControl control;
    const Owned source = New("T");
    source->SetAttributeList({"", ""}, {"1", "2"});

    QCOMPARE(ElementText(Read(source->WriteToBinary()).get()), QString("<T =\"1\" =\"2\"/>"));
}

void SCLElement_BinaryTest::manyAttributesOfFewNamesAreMerged()
{
    const TestControl control;
    constexpr int names = 60000;
    constexpr int rounds = 10;
    QByteArray image = Text("T") + Text(QString()) + Word(names * rounds);
    for (int i = 0; i < names * rounds; ++i)
        image += Text(QString::number(i % names)) + Text(QString::number(i / names));

    const Owned read = Read(image + Word(0));

    QCOMPARE(read->GetAttributeList().size(), names);
    QCOMPARE(read->GetAttribute("59999"), QString("9"));
}

void SCLElement_BinaryTest::readingNeedsNoDocument()
{
    TestControl control;
    SignalLog log(control.Get());
    log.Watch(control.Create());
    const Owned source = Varied();

    const Owned read = Read(source->WriteToBinary());

    QCOMPARE(log.Lines(), QStringList());
    QVERIFY(read->GetDocument() == nullptr);
    QVERIFY(read->FindChild("IED", 0)->GetDocument() == nullptr);
}

void SCLElement_BinaryTest::readingMarksModifiedAndSignalsNothingElse()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    const QByteArray attribute =
        Text("SCL") + Text("v") + Word(1) + Text("a") + Text("1") + Word(0);
    SignalLog log(document);

    document->Root()->ReadFromBinary(Text("SCL") + Text("v") + Word(0) + Word(0));
    log.Mark("value read");
    document->Root()->ReadFromBinary(attribute);
    log.Mark("attribute read");
    document->SetModified(false, false);
    document->Root()->ReadFromBinary(Head("SCL", 1) + Head("IED", 0));

    QCOMPARE(log.Lines(), QStringList({"value read", "modifiedStateChanged true", "attribute read",
                                       "modifiedStateChanged false", "modifiedStateChanged true"}));
}

void SCLElement_BinaryTest::anUnchangedAttributeMarksNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL a='1' b=''/>");
    const Owned source = New("SCL");
    source->SetAttributeList({"a", "b"}, {"1", QString()});

    document->Root()->ReadFromBinary(source->WriteToBinary());

    QVERIFY(!document->GetModified());
    QCOMPARE(Quoted(document->Root()->GetAttribute("b")), QString("\"\""));
}

void SCLElement_BinaryTest::childrenGetTheDocumentAndTheirParent()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL/>");
    SCLElement* root = document->Root();

    root->ReadFromBinary(Head("SCL", 1) + Head("IED", 1) + Head("LN", 0));

    SCLElement* ied = root->FindChild("IED", 0);
    SCLElement* ln = ied->FindChild("LN", 0);
    QCOMPARE(ied->GetDocument(), document);
    QCOMPARE(ln->GetDocument(), document);
    QCOMPARE(ied->GetParent(""), root);
    QCOMPARE(ln->GetParent(""), ied);
}

void SCLElement_BinaryTest::theEmptyTagIsPooled()
{
    const Internal::SCLNamePool pool;
    const Owned top = New("T");

    top->ReadFromBinary(Head("T", 0));
    QCOMPARE(pool.GetIdFromTag(""), Internal::SCLNamePool::m_uInvalidId);
    top->ReadFromBinary(Head("T", 2) + Head("A", 0) + Head("B", 0));

    QCOMPARE(pool.GetIdFromTag(""), static_cast<unsigned short>(2));
    QCOMPARE(pool.GetIdFromTag("A"), static_cast<unsigned short>(3));
    QCOMPARE(pool.GetIdFromTag("B"), static_cast<unsigned short>(4));
}

void SCLElement_BinaryTest::aFullPoolLosesNamesOnly()
{
    Internal::SCLNamePool pool;
    for (int i = 0; i < 65535; ++i) {
        pool.AddTagToNamePool(QString::number(i));
        pool.AddAttToNamePool(QString::number(i));
    }
    const QByteArray image = Head("1", 2) + Text("new") + Text("v") + Word(2) + Text("new") +
                             Text("x") + Text("7") + Text("y") + Word(0) + Head("2", 0);

    const Owned read = Read(image);

    QCOMPARE(ElementText(read.get()), QString("<1>< 7=\"y\">v</><2/></1>"));
}

void SCLElement_BinaryTest::recordsMayFollowOneAnother()
{
    const TestControl control;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << qint32(7);
    Varied()->Serialize(out, true, nullptr);
    New("B")->Serialize(out, true, nullptr);
    out << qint32(8);

    QDataStream in(bytes);
    const Owned first = New("");
    const Owned second = New("");
    qint32 before = 0;
    qint32 behind = 0;
    in >> before;
    first->Serialize(in, false, nullptr);
    second->Serialize(in, false, nullptr);
    in >> behind;

    QCOMPARE(before, 7);
    QCOMPARE(ElementText(first.get()), ElementText(Varied().get()));
    QCOMPARE(ElementText(second.get()), QString("<B/>"));
    QCOMPARE(behind, 8);
    QVERIFY(in.atEnd());
    QCOMPARE(in.status(), QDataStream::Ok);
}

void SCLElement_BinaryTest::anyDeviceServes()
{
    const TestControl control;
    const Owned source = Varied();
    SCLElement* large = source->CreateChild("Text", -1, false);
    large->SetValue(QString(3000000, QLatin1Char('x')), false);
    Pipe pipe;
    QDataStream stream(&pipe);

    source->Serialize(stream, true, nullptr);
    stream << qint32(9);
    const Owned read = New("");
    read->Serialize(stream, false, nullptr);
    qint32 behind = 0;
    stream >> behind;

    QVERIFY(read->WriteToBinary() == source->WriteToBinary());
    QCOMPARE(behind, 9);
}

void SCLElement_BinaryTest::theByteOrderIsThatOfTheStream()
{
    const TestControl control;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    New("SCL")->Serialize(out, true, nullptr);

    QDataStream in(bytes);
    in.setByteOrder(QDataStream::LittleEndian);
    const Owned read = New("");
    read->Serialize(in, false, nullptr);

    QCOMPARE(bytes.left(6).toHex(), QByteArray("060000005300"));
    QCOMPARE(ElementText(read.get()), QString("<SCL/>"));
}

void SCLElement_BinaryTest::progressMovesOnceWhenWriting()
{
    const TestControl control;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QFutureInterface<QString> future;
    future.setProgressRange(0, 100);
    future.setProgressValue(41);

    Varied()->Serialize(stream, true, &future);

    QCOMPARE(future.progressValue(), 42);
}

void SCLElement_BinaryTest::progressIsThePositionWhenReading()
{
    const TestControl control;
    QDataStream stream(Word(7) + Varied()->WriteToBinary());
    qint32 before = 0;
    stream >> before;
    QFutureInterface<QString> future;
    future.setProgressRange(0, 100);

    Read({})->Serialize(stream, false, &future);

    QCOMPARE(future.progressValue(), 4);
}

void SCLElement_BinaryTest::eventsRunOnlyWithProgress()
{
    const TestControl control;
    int runs = 0;
    QTimer::singleShot(0, this, [&runs] { ++runs; });
    const QByteArray image = New("T")->WriteToBinary();
    Read(image);
    QCOMPARE(runs, 0);

    QDataStream stream(image);
    QFutureInterface<QString> future;
    New("T")->Serialize(stream, false, &future);

    QCOMPARE(runs, 1);
}

void SCLElement_BinaryTest::nothingReadsAsAnEmptyElement()
{
    const TestControl control;

    const Owned read = Read({});

    QCOMPARE(ElementText(read.get()), QString("</>"));
    QVERIFY(read->GetTag().isEmpty());
    QVERIFY(read->GetValue().isNull());
}

void SCLElement_BinaryTest::aCutImageGivesWhatIsThere()
{
    const TestControl control;
    const QByteArray image = Head("SCL", 2) + Head("IED", 0) + Text("LN") + Text("value");

    QCOMPARE(ElementText(Read(image).get()), QString("<SCL><IED/><LN>value</LN></SCL>"));
    QCOMPARE(ElementText(Read(image.chopped(1)).get()), QString("<SCL><IED/><LN/></SCL>"));
    QVERIFY(Read(image.chopped(1))->FindChild("LN", 0)->GetValue().isNull());
}

void SCLElement_BinaryTest::promisedChildrenThatFitAreMade()
{
    const TestControl control;

    QCOMPARE(ElementText(Read(Head("SCL", 2) + Head("IED", 0)).get()),
             QString("<SCL></><IED/></SCL>"));
}

void SCLElement_BinaryTest::countsThatCannotBeEndWithTheBytes_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("text");
    const QByteArray start = Text("T") + Text(QString());
    const QByteArray attribute = Text("a") + Text("1");
    QTest::newRow("children") << start + Word(0) + Word(0x7FFFFFFF) << "<T/>";
    QTest::newRow("children, one there")
        << start + Word(0) + Word(0x7FFFFFFF) + Head("A", 0) << "<T><A/></T>";
    QTest::newRow("attributes") << start + Word(0x7FFFFFFF) << "<T/>";
    QTest::newRow("attributes, one there")
        << start + Word(0x7FFFFFFF) + attribute << "<T a=\"1\"/>";
    QTest::newRow("negative attributes") << start + Word(0xFFFFFFFF) + Word(0) << "<T/>";
    QTest::newRow("negative children")
        << start + Word(0) + Word(0x80000000) + Head("A", 0) << "<T/>";
}

void SCLElement_BinaryTest::countsThatCannotBeEndWithTheBytes()
{
    QFETCH(const QByteArray, image);
    QFETCH(const QString, text);
    const TestControl control;

    QCOMPARE(ElementText(Read(image).get()), text);

    Pipe pipe;
    pipe.write(image);
    QDataStream stream(&pipe);
    const Owned read = New("");
    read->Serialize(stream, false, nullptr);
    QCOMPARE(ElementText(read.get()), text);
}

void SCLElement_BinaryTest::lengthsThatLieAllocateNothing_data()
{
    QTest::addColumn<quint32>("length");
    QTest::newRow("largest even") << 0xFFFFFFFEU;
    QTest::newRow("largest positive even") << 0x7FFFFFFEU;
    QTest::newRow("odd") << 0x7FFFFFFFU;
    QTest::newRow("one too long") << 12U;
}

void SCLElement_BinaryTest::lengthsThatLieAllocateNothing()
{
    QFETCH(const quint32, length);
    const TestControl control;
    const QByteArray image = Word(length) + QByteArray(10, '\0');

    const Owned read = Read(image);
    QVERIFY(read->GetTag().isEmpty());
    QCOMPARE(read->GetChildCount(true), 0);

    Pipe pipe;
    pipe.write(image);
    QDataStream stream(&pipe);
    read->Serialize(stream, false, nullptr);
    QVERIFY(read->GetTag().isEmpty());
    QCOMPARE(read->GetChildCount(true), 0);
}

// Each level promises as many children as the whole image could hold.
void SCLElement_BinaryTest::promisesOfAllLevelsTogetherAreBounded()
{
    const TestControl control;
    constexpr int levels = 20000;
    QByteArray image;
    for (int i = 0; i < levels; ++i)
        image += Head("T", levels);

    const Owned read = Read(image);

    QVERIFY(read->GetChildCount(true) >= levels - 1);
    QVERIFY(read->GetChildCount(true) <= levels + image.size() / 16);
}

void SCLElement_BinaryTest::aMillionLevels()
{
    const TestControl control;
    constexpr int levels = 1000000;
    const Owned top = New("T");
    SCLElement* element = top.get();
    for (int i = 0; i < levels; ++i)
        element = element->CreateChild("T", -1, false);

    const QByteArray image = top->WriteToBinary();
    const Owned read = Read(image);

    QCOMPARE(image.size(), 18 * (levels + 1));
    QCOMPARE(read->GetChildCount(true), levels);
    QVERIFY(read->WriteToBinary() == image);
}

QTEST_GUILESS_MAIN(SCLElement_BinaryTest)
#include "SCLElement_BinaryTest.moc"
