// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLNamePool.h>

#include <QBuffer>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QFuture>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>
#include <QXmlStreamReader>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

/// The most memory that the process has held so far, in bytes.
qint64 PeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

/// Far above what refusing a file takes, far below what the files tried here would grow to.
constexpr qint64 memoryAllowance = qint64(600) * 1024 * 1024;

/// Where and why a plain reader stops in a text, in the form in which the library reports it.
QString ReaderVerdict(const QByteArray& xml)
{
    QByteArray bytes = xml;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&device);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd())
        reader.readNext();
    return QStringLiteral("Row %1, Col %2: %3")
        .arg(reader.lineNumber())
        .arg(reader.columnNumber())
        .arg(reader.errorString());
}

/// An element nested in itself, \a depth levels below the root.
QByteArray Nested(int depth)
{
    return "<SCL>" + QByteArray("<P>").repeated(depth) + QByteArray("</P>").repeated(depth) +
           "</SCL>";
}

/// What timers see while a document loads.
struct Progress {
    QList<int> values;
    QList<int> children;
    bool opened = false;
    QFuture<QString> task;
};

/// Opens a file and lets a timer look on each time that events are processed.
Progress OpenWatched(SCLDocument* document, const QString& path)
{
    Progress progress;
    QObject context;
    QObject::connect(
        document, &SCLDocument::sigFutaskTaskPrepared, &context,
        [&](const QFuture<QString>& future, const QString&) { progress.task = future; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &context, [&] {
        progress.values += progress.task.progressValue();
        progress.children += document->Root()->GetChildCount(false);
    });
    timer.start(0);
    progress.opened = document->Open(path);
    return progress;
}

/// A file of 1000 characters with 66 children of two sizes.
const QString thousandCharacters = "<SCL>" +
                                   QStringLiteral("<Private type=\"abcdefg\"/><P/>").repeated(33) +
                                   QString(32, ' ') + "</SCL>";

/// The percents at which elements of a text end, as far as they are multiples of 5.
QList<int> EndsAtFifthPercents(const QString& xml, double total)
{
    QList<int> percents;
    int at = 0;
    while ((at = static_cast<int>(xml.indexOf('>', at)) + 1) > 0) {
        const bool isEnd = xml.at(at - 2) == '/' || at == xml.size();
        const int percent = static_cast<int>(at / total * 100.0);
        if (isEnd && percent % 5 == 0)
            percents += percent;
    }
    return percents;
}

QByteArray Utf16(const QString& text, bool bigEndian)
{
    QByteArray bytes;
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    for (const QChar c : marked) {
        const char high = static_cast<char>(c.unicode() >> 8);
        const char low = static_cast<char>(c.unicode() & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

} // namespace

class SCLDocument_LoadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // These come first: a peak that another test had raised already would hide theirs.
    void aFileThatEntitiesOrDefaultsBlowUpIsRefusedInBoundedMemory_data();
    void aFileThatEntitiesOrDefaultsBlowUpIsRefusedInBoundedMemory();

    void openingAnOpenFileGivesTheSameDocument_data();
    void openingAnOpenFileGivesTheSameDocument();
    void openingAFileAppendsTheDocumentAndSaysSo();
    void openingWithoutNotifySendsNothing();
    void openingWhatCannotBeReadLeavesEverythingAsItWas_data();
    void openingWhatCannotBeReadLeavesEverythingAsItWas();
    void aFailedOpenStillSetsTheFileName_data();
    void aFailedOpenStillSetsTheFileName();

    void theTreeHoldsWhatTheFileHolds_data();
    void theTreeHoldsWhatTheFileHolds();
    void anEmptyAttributeIsEmptyAndNotNull();
    void aLoadedDocumentIsNotModified();
    void everyElementKnowsItsDocumentAndParent();
    void loadingSendsNoElementSignal();
    void loadingEndsTheModifiedState_data();
    void loadingEndsTheModifiedState();

    void everyCommonEncodingIsRead_data();
    void everyCommonEncodingIsRead();

    void aRootOfAnotherNameIsNoSclFile_data();
    void aRootOfAnotherNameIsNoSclFile();
    void aBadFileFailsWithRowColumnAndReason_data();
    void aBadFileFailsWithRowColumnAndReason();
    void everyBeginningOfAFileFails();
    void aPartialTreeStaysAfterAParseFailure();
    void nothingClearsTheLastError();
    void nothingOutsideTheFileIsRead_data();
    void nothingOutsideTheFileIsRead();

    void theProgressTaskIsAnnouncedBeforeItStarts();
    void progressFollowsTheOffsetOfElementEnds();
    void progressStaysBehindInAFileOfWideCharacters();
    void aSlotSeesTheTreeHalfBuilt();
    void theTaskOfAFailedLoadIsCancelledAndFinished_data();
    void theTaskOfAFailedLoadIsCancelledAndFinished();
    void noTaskIsPreparedWhenThereIsNoFileToRead();
    void theWaitCursorIsShownWhileAFileLoads_data();
    void theWaitCursorIsShownWhileAFileLoads();

    void aMillionLevelsLoadAreCountedSearchedClonedAndClosed();
    void twentyThousandAttributesLoad();
    void sixtyFiveThousandTagsLoad();
    void moreTagsThanThePoolHoldsFailPlainly();
    void anAttributeOfAHundredMegabytesLoads();
};

void SCLDocument_LoadTest::aFileThatEntitiesOrDefaultsBlowUpIsRefusedInBoundedMemory_data()
{
    QTest::addColumn<QByteArray>("xml");

    QByteArray laughs = "<!DOCTYPE SCL [<!ENTITY l0 \"ha\">";
    for (int i = 1; i <= 30; ++i) {
        const QByteArray inner = "&l" + QByteArray::number(i - 1) + ";";
        laughs += "<!ENTITY l" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    laughs += "]>";
    QTest::newRow("entities of entities in text") << laughs + "<SCL>&l30;</SCL>";
    QTest::newRow("entities of entities in an attribute") << laughs + "<SCL a=\"&l30;\"/>";

    const QByteArray shortEntity =
        "<!DOCTYPE SCL [<!ENTITY e \"" + QByteArray(4000, 'x') + "\">]><SCL>";
    QTest::newRow("a short entity very often in text")
        << shortEntity + QByteArray("&e;").repeated(200000) + "</SCL>";
    QTest::newRow("a short entity in very many attributes")
        << shortEntity + QByteArray("<P a=\"&e;\"/>").repeated(200000) + "</SCL>";
    QTest::newRow("a long entity ten thousand times")
        << "<!DOCTYPE SCL [<!ENTITY e \"" + QByteArray(1000000, 'x') + "\">]><SCL>" +
               QByteArray("&e;").repeated(10000) + "</SCL>";
    QTest::newRow("a long attribute default on ten thousand elements")
        << "<!DOCTYPE SCL [<!ATTLIST P a CDATA \"" + QByteArray(1000000, 'x') + "\">]><SCL>" +
               QByteArray("<P/>").repeated(10000) + "</SCL>";

    QByteArray defaults = "<!DOCTYPE SCL [";
    for (int i = 0; i < 1000; ++i)
        defaults +=
            "<!ATTLIST P a" + QByteArray::number(i) + " CDATA \"" + QByteArray(1000, 'x') + "\">";
    QTest::newRow("a thousand attribute defaults on ten thousand elements")
        << defaults + "]><SCL>" + QByteArray("<P/>").repeated(10000) + "</SCL>";
}

void SCLDocument_LoadTest::aFileThatEntitiesOrDefaultsBlowUpIsRefusedInBoundedMemory()
{
    QFETCH(QByteArray, xml);
    TestControl control;
    const QString path = control.Folder().Write("bomb.scd", xml);
    const qint64 before = PeakMemory();

    QCOMPARE(control->OpenDocument(path, true), nullptr);

    QVERIFY2(PeakMemory() - before < memoryAllowance, qPrintable(QString::number(PeakMemory())));
    const QString error = control->GetLastError();
    QVERIFY2(error.startsWith(QStringLiteral("Row ")) && error.size() < 1000,
             qPrintable(error.left(1000)));
}

void SCLDocument_LoadTest::openingAnOpenFileGivesTheSameDocument_data()
{
    QTest::addColumn<QString>("written");
    QTest::newRow("the same path") << "%1/a.scd";
    QTest::newRow("with a step up and down") << "%1/../%2/a.scd";
    QTest::newRow("with a dot and two slashes") << "%1/.//a.scd";
}

void SCLDocument_LoadTest::openingAnOpenFileGivesTheSameDocument()
{
    QFETCH(QString, written);
    TestControl control;
    SCLDocument* document = control->OpenDocument(control.Folder().Write("a.scd", "<SCL/>"), false);
    const QString folder = control.Folder().Path();
    const QString again =
        QString(written).replace("%1", folder).replace("%2", QDir(folder).dirName());
    SignalLog log(control.Get());

    QCOMPARE(control->OpenDocument(again, true), document);

    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>{document});
}

void SCLDocument_LoadTest::openingAFileAppendsTheDocumentAndSaysSo()
{
    TestControl control;
    SCLDocument* first = control.Create();
    SignalLog log(control.Get());
    QObject context;
    QObject::connect(control.Get(), &SCLDocControl::sigDocumentOpened, &context,
                     [&](SCLDocument* opened) {
                         log.Mark(QString::number(control->GetDocumentList().indexOf(opened)));
                     });

    SCLDocument* second = control->OpenDocument(control.Folder().Write("a.scd", "<SCL/>"), true);

    QCOMPARE(log.Lines(),
             QStringList({"control taskPrepared \"Parsing\"", "documentOpened \"a.scd\"", "1"}));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>({first, second}));
    QCOMPARE(second->GetFileName(), control.Folder().Path("a.scd"));
}

void SCLDocument_LoadTest::openingWithoutNotifySendsNothing()
{
    TestControl control;
    SignalLog log(control.Get());
    QVERIFY(control->OpenDocument(control.Folder().Write("a.scd", "<SCL/>"), false));
    QCOMPARE(log.Lines(), QStringList("control taskPrepared \"Parsing\""));
}

void SCLDocument_LoadTest::openingWhatCannotBeReadLeavesEverythingAsItWas_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("missing file") << "missing.scd";
    QTest::newRow("missing folder") << "missing/a.scd";
    QTest::newRow("a folder") << ".";
}

void SCLDocument_LoadTest::openingWhatCannotBeReadLeavesEverythingAsItWas()
{
    QFETCH(QString, name);
    TestControl control;
    SCLDocument* other = control.Create();
    control->SetLastError("an older error");
    SignalLog log(control.Get());

    QCOMPARE(control->OpenDocument(name.isEmpty() ? name : control.Folder().Path(name), true),
             nullptr);

    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>{other});
    QCOMPARE(control->GetLastError(), QString("an older error"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocument_LoadTest::aFailedOpenStillSetsTheFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("missing file") << "missing.scd";
    QTest::newRow("bad file") << "bad.scd";
}

void SCLDocument_LoadTest::aFailedOpenStillSetsTheFileName()
{
    QFETCH(QString, name);
    TestControl control;
    control.Folder().Write("bad.scd", "<SCL>");
    const QString path = name.isEmpty() ? name : control.Folder().Path(name);
    SCLDocument document;

    QVERIFY(!document.Open(path));

    QCOMPARE(document.GetFileName(), path);
}

void SCLDocument_LoadTest::theTreeHoldsWhatTheFileHolds_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("tree");

    QTest::newRow("attributes of the root in file order, xmlns among them")
        << QByteArray("<SCL version=\"2007\" xmlns=\"http://a\" xmlns:x=\"http://b\" x:c=\"1\"/>")
        << "<SCL version=\"2007\" xmlns=\"http://a\" xmlns:x=\"http://b\" x:c=\"1\"/>";
    QTest::newRow("prefixes stay in tags, declared or not")
        << QByteArray("<SCL><x:Private/><y:Private xmlns:y=\"http://b\"/></SCL>")
        << "<SCL><x:Private/><y:Private xmlns:y=\"http://b\"/></SCL>";
    QTest::newRow("a root SCL of any namespace")
        << QByteArray("<SCL xmlns=\"http://any\"/>") << "<SCL xmlns=\"http://any\"/>";
    QTest::newRow("a root SCL without namespace") << QByteArray("<SCL/>") << "<SCL/>";
    QTest::newRow("declaration, comments and instructions leave no trace")
        << QByteArray("<?xml version=\"1.0\"?><!-- a --><?b c?><SCL><!-- d --><?e f?><IED/></SCL>"
                      "<!-- g -->")
        << "<SCL><IED/></SCL>";
    QTest::newRow("document type leaves no trace")
        << QByteArray("<!DOCTYPE SCL [<!ELEMENT SCL ANY>]><SCL/>") << "<SCL/>";
    QTest::newRow("an attribute default is an attribute as the reader delivers it")
        << QByteArray("<!DOCTYPE SCL [<!ATTLIST IED desc CDATA \"d\">]><SCL><IED/></SCL>")
        << "<SCL><IED desc=\"d\"/></SCL>";

    QTest::newRow("surrounding blanks of text are kept")
        << QByteArray("<SCL><Val>\n  a b \t</Val></SCL>") << "<SCL><Val>\n  a b \t</Val></SCL>";
    QTest::newRow("blanks and line breaks alone are no value")
        << QByteArray("<SCL><Val> \r\n\t </Val></SCL>") << "<SCL><Val/></SCL>";
    QTest::newRow("CDATA is text") << QByteArray("<SCL><Val><![CDATA[<x>&amp;]]></Val></SCL>")
                                   << "<SCL><Val>&lt;x&gt;&amp;amp;</Val></SCL>";
    QTest::newRow("blank CDATA is a value")
        << QByteArray("<SCL><Val><![CDATA[  ]]></Val></SCL>") << "<SCL><Val>  </Val></SCL>";
    QTest::newRow("blanks beside CDATA are dropped")
        << QByteArray("<SCL><Val> <![CDATA[x]]> </Val></SCL>") << "<SCL><Val>x</Val></SCL>";
    QTest::newRow("a blank written as a character reference is a value")
        << QByteArray("<SCL><Val>&#32;</Val></SCL>") << "<SCL><Val> </Val></SCL>";
    QTest::newRow("a character reference keeps the blanks around it")
        << QByteArray("<SCL><Val> &#x20;\t</Val></SCL>") << "<SCL><Val>  \t</Val></SCL>";
    QTest::newRow("a comment cuts text without a separator")
        << QByteArray("<SCL><Val>a<!-- c -->b</Val></SCL>") << "<SCL><Val>ab</Val></SCL>";
    QTest::newRow("blanks between two comments are dropped")
        << QByteArray("<SCL><Val>a<!-- c --> <!-- d -->b</Val></SCL>")
        << "<SCL><Val>ab</Val></SCL>";
    QTest::newRow("blanks between two instructions are dropped")
        << QByteArray("<SCL><Val>a<?c?> <?d?>b</Val></SCL>") << "<SCL><Val>ab</Val></SCL>";
    QTest::newRow("an entity does not cut text")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY e \"v\">]><SCL><Val> &e; &lt; </Val></SCL>")
        << "<SCL><Val> v &lt; </Val></SCL>";
    QTest::newRow("an undeclared entity of an external document type is dropped")
        << QByteArray("<!DOCTYPE SCL SYSTEM \"missing.dtd\"><SCL><Val>a&e;b</Val></SCL>")
        << "<SCL><Val>ab</Val></SCL>";
    QTest::newRow("text around a child is joined")
        << QByteArray("<SCL><Text>x<P/>y</Text></SCL>") << "<SCL><Text>xy<P/></Text></SCL>";
    QTest::newRow("text goes to the innermost open element")
        << QByteArray("<SCL>a<Text>b<P>c</P>d</Text>e</SCL>")
        << "<SCL>ae<Text>bd<P>c</P></Text></SCL>";
    QTest::newRow("CR LF is one line break")
        << QByteArray("<SCL>\r\n<Val>a\r\nb\rc</Val>\r\n</SCL>\r\n")
        << "<SCL><Val>a\nb\nc</Val></SCL>";

    QTest::newRow("attribute values are not trimmed")
        << QByteArray("<SCL desc=\"  a  \"/>") << "<SCL desc=\"  a  \"/>";
    QTest::newRow("a line break in an attribute is a blank, a reference to one is none")
        << QByteArray("<SCL a=\"x\ny\tz\" b=\"x&#10;y\"/>") << "<SCL a=\"x y z\" b=\"x\ny\"/>";
    QTest::newRow("reserved characters")
        << QByteArray("<SCL a=\"&lt;&amp;&gt;&apos;&quot;'\"><Val>&amp;&lt;&gt;</Val></SCL>")
        << QStringLiteral("<SCL a=\"%1\"><Val>&amp;&lt;&gt;</Val></SCL>")
               .arg(QStringLiteral("<&>'\"'").toHtmlEscaped());

    QTest::newRow("children that alternate end up in two groups, each in file order")
        << QByteArray("<SCL><LN i=\"1\"/><DO i=\"1\"/><LN i=\"2\"/><DO i=\"2\"/></SCL>")
        << "<SCL><LN i=\"1\"/><LN i=\"2\"/><DO i=\"1\"/><DO i=\"2\"/></SCL>";
    QTest::newRow("an SCL inside SCL is an ordinary element")
        << QByteArray("<SCL><SCL/></SCL>") << "<SCL><SCL/></SCL>";
    QTest::newRow("names of any script")
        << QByteArray("<SCL><\xE7\xAB\x99 \xE5\x90\x8D=\"1\"/></SCL>")
        << QString::fromUtf8("<SCL><\xE7\xAB\x99 \xE5\x90\x8D=\"1\"/></SCL>");
}

void SCLDocument_LoadTest::theTreeHoldsWhatTheFileHolds()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, tree);
    TestControl control;
    QCOMPARE(ElementText(control.OpenRoot(xml)), tree);
}

void SCLDocument_LoadTest::anEmptyAttributeIsEmptyAndNotNull()
{
    TestControl control;
    const QString value = control.OpenRoot("<SCL desc=\"\"/>")->GetAttribute("desc");
    QVERIFY(value.isEmpty());
    QVERIFY(!value.isNull());
}

void SCLDocument_LoadTest::aLoadedDocumentIsNotModified()
{
    TestControl control;
    QVERIFY(!control.Open("<SCL><IED name=\"A\">x</IED></SCL>")->GetModified());
}

void SCLDocument_LoadTest::everyElementKnowsItsDocumentAndParent()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL><IED><AccessPoint/></IED></SCL>");
    SCLElement* accessPoint = At(document->Root(), "IED/AccessPoint");
    SCLElement* ied = At(document->Root(), "IED");

    QCOMPARE(accessPoint->GetDocument(), document);
    QCOMPARE(ied->GetDocument(), document);
    QCOMPARE(document->Root()->GetDocument(), document);
    QCOMPARE(accessPoint->GetParent(QString()), ied);
    QCOMPARE(ied->GetParent(QString()), document->Root());
    QCOMPARE(document->Root()->GetParent(QString()), nullptr);
}

void SCLDocument_LoadTest::loadingSendsNoElementSignal()
{
    TestControl control;
    const QString path =
        control.Folder().Write("a.scd", "<SCL><IED name=\"A\">x<LN/></IED><IED/></SCL>");
    SCLDocument document;
    SignalLog log(&document);
    QVERIFY(document.Open(path));
    QCOMPARE(log.Lines(), QStringList("taskPrepared \"Parsing\""));
}

void SCLDocument_LoadTest::loadingEndsTheModifiedState_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a good file") << QByteArray("<SCL/>") << true;
    QTest::newRow("a bad file") << QByteArray("<SCL>") << false;
}

void SCLDocument_LoadTest::loadingEndsTheModifiedState()
{
    QFETCH(QByteArray, xml);
    QFETCH(bool, opens);
    TestControl control;
    SCLDocument document;
    document.SetModified(true, false);
    SignalLog log(&document);

    QCOMPARE(document.Open(control.Folder().Write("a.scd", xml)), opens);

    QVERIFY(!document.GetModified());
    QCOMPARE(log.Lines(), QStringList({"taskPrepared \"Parsing\"", "modifiedStateChanged false"}));
}

void SCLDocument_LoadTest::everyCommonEncodingIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("desc");

    const auto file = [](const char* encoding, const QByteArray& desc) {
        return "<?xml version=\"1.0\" encoding=\"" + QByteArray(encoding) + "\"?>\n<SCL desc=\"" +
               desc + "\"><Text>" + desc + "</Text></SCL>\n";
    };
    const QString station = QString::fromUtf8("\xE5\x8F\x98\xE7\x94\xB5\xE7\xAB\x99");
    const QByteArray station8 = station.toUtf8();
    const QString plain = "<SCL desc=\"" + station + "\"><Text>" + station + "</Text></SCL>";
    const QString declared = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + plain;

    QTest::newRow("UTF-8") << file("UTF-8", station8) << station;
    QTest::newRow("UTF-8, lower case") << file("utf-8", station8) << station;
    QTest::newRow("UTF-8 without declaration") << plain.toUtf8() << station;
    QTest::newRow("UTF-8 with a byte order mark")
        << "\xEF\xBB\xBF" + file("UTF-8", station8) << station;
    QTest::newRow("UTF-8 with CR LF") << file("UTF-8", station8).replace("\n", "\r\n") << station;
    QTest::newRow("UTF-8, beyond the basic plane")
        << file("UTF-8", "\xF0\xA0\x80\x8B") << QString::fromUtf8("\xF0\xA0\x80\x8B");
    QTest::newRow("GB2312") << file("GB2312", "\xB1\xE4\xB5\xE7\xD5\xBE") << station;
    QTest::newRow("GB2312, lower case") << file("gb2312", "\xB1\xE4\xB5\xE7\xD5\xBE") << station;
    QTest::newRow("GBK") << file("GBK", "\xB1\xE4\xE9\x46")
                         << QString::fromUtf8("\xE5\x8F\x98\xE9\x95\x95");
    QTest::newRow("GB18030, four bytes a character")
        << file("GB18030", "\xB1\xE4\x81\x39\xEE\x39")
        << QString::fromUtf8("\xE5\x8F\x98\xE3\x90\x80");
    QTest::newRow("ISO 8859-1") << file("ISO-8859-1", "\xDC"
                                                      "berstr\xF6m")
                                << QString::fromLatin1("\xDC"
                                                       "berstr\xF6m");
    QTest::newRow("UTF-16, little end first") << Utf16(declared, false) << station;
    QTest::newRow("UTF-16, big end first") << Utf16(declared, true) << station;
    QTest::newRow("UTF-16 without declaration") << Utf16(plain, false) << station;
}

void SCLDocument_LoadTest::everyCommonEncodingIsRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, desc);
    TestControl control;
    SCLElement* root = control.OpenRoot(bytes);
    QCOMPARE(root->GetAttribute("desc"), desc);
    QCOMPARE(root->GetFirstChild("Text")->GetValue(), desc);
}

void SCLDocument_LoadTest::aRootOfAnotherNameIsNoSclFile_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("position");
    QTest::newRow("a prefix") << QByteArray("<scl:SCL xmlns:scl=\"http://a\"/>") << "Row 1, Col 31";
    QTest::newRow("other case") << QByteArray("<scl></scl>") << "Row 1, Col 5";
    QTest::newRow("SCL below the root") << QByteArray("<a><SCL/></a>") << "Row 1, Col 3";
    QTest::newRow("on a later line")
        << QByteArray("<?xml version=\"1.0\"?>\n<!-- c -->\n<html>\n</html>") << "Row 3, Col 6";
}

void SCLDocument_LoadTest::aRootOfAnotherNameIsNoSclFile()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, position);
    TestControl control;
    const QString path = control.Folder().Write("a.scd", xml);
    SCLDocument document;

    QVERIFY(!document.Open(path));

    QCOMPARE(document.Root(), nullptr);
    QCOMPARE(control->GetLastError(), position + ": The file is not an SCL file.");
    QCOMPARE(control->OpenDocument(path, true), nullptr);
}

void SCLDocument_LoadTest::aBadFileFailsWithRowColumnAndReason_data()
{
    QTest::addColumn<QByteArray>("xml");

    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("blanks only") << QByteArray(" \n ");
    QTest::newRow("text only") << QByteArray("station");
    QTest::newRow("declaration only") << QByteArray("<?xml version=\"1.0\"?>");
    QTest::newRow("byte order mark only") << QByteArray("\xEF\xBB\xBF");
    QTest::newRow("cut off inside a tag") << QByteArray("<SCL>\n<IED na");
    QTest::newRow("cut off inside an element") << QByteArray("<SCL>\n<IED name=\"A\">");
    QTest::newRow("end tag of another element") << QByteArray("<SCL>\n <IED></LN>\n</SCL>");
    QTest::newRow("attribute without quotes") << QByteArray("<SCL a=1/>");
    QTest::newRow("attribute twice") << QByteArray("<SCL>\n<IED name=\"A\" name=\"B\"/></SCL>");
    QTest::newRow("reserved character") << QByteArray("<SCL a=\"a&b\"/>");
    QTest::newRow("less-than in an attribute") << QByteArray("<SCL a=\"<\"/>");
    QTest::newRow("undeclared entity") << QByteArray("<SCL>&nbsp;</SCL>");
    QTest::newRow("entity of itself")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY e \"&e;\">]><SCL>&e;</SCL>");
    QTest::newRow("character that XML cannot hold") << QByteArray("<SCL>\x01</SCL>");
    QTest::newRow("reference to a character that XML cannot hold") << QByteArray("<SCL>&#1;</SCL>");
    QTest::newRow("zero byte") << QByteArray("<SCL>\0</SCL>", 12);
    QTest::newRow("two roots") << QByteArray("<SCL/><SCL/>");
    QTest::newRow("text after the root") << QByteArray("<SCL/> x");
    QTest::newRow("declaration not at the start") << QByteArray("\n<?xml version=\"1.0\"?><SCL/>");
    QTest::newRow("other XML version") << QByteArray("<?xml version=\"2.0\"?><SCL/>");
    QTest::newRow("unknown encoding")
        << QByteArray("<?xml version=\"1.0\" encoding=\"nonsense\"?><SCL/>");
    QTest::newRow("Latin-1 in UTF-8") << QByteArray("<SCL desc=\"\xDC"
                                                    "berstr\xF6m\"/>");
    QTest::newRow("GBK in UTF-8") << QByteArray(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><SCL desc=\"\xB1\xE4\"/>");
    QTest::newRow("an archive") << QByteArray("PK\x03\x04\x14\0\0\0\x08\0", 10);
    QTest::newRow("zero bytes") << QByteArray(4096, '\0');
    QTest::newRow("all bytes there are") << [] {
        QByteArray bytes;
        for (int i = 0; i < 256; ++i)
            bytes += static_cast<char>(i);
        return bytes;
    }();
    QTest::newRow("half a UTF-16 character") << Utf16("<SCL/>", false).chopped(1);
}

void SCLDocument_LoadTest::aBadFileFailsWithRowColumnAndReason()
{
    QFETCH(QByteArray, xml);
    TestControl control;
    SCLDocument* other = control.Create();
    control->SetLastError("an older error");
    const QString path = control.Folder().Write("a.scd", xml);
    SignalLog log(control.Get());

    QCOMPARE(control->OpenDocument(path, true), nullptr);

    QCOMPARE(control->GetLastError(), ReaderVerdict(xml));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>{other});
    QCOMPARE(log.Lines(), QStringList("control taskPrepared \"Parsing\""));
}

void SCLDocument_LoadTest::everyBeginningOfAFileFails()
{
    const QByteArray whole = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<!DOCTYPE SCL [<!ENTITY e \"v\"><!ATTLIST IED desc CDATA \"d\">]>\n"
                             "<SCL xmlns=\"http://a\">\n <!-- c --><?p q?>\n"
                             " <IED name=\"\xE7\xAB\x99&amp;\"><Val> &e;<![CDATA[<]]></Val></IED>\n"
                             "</SCL>";
    TestControl control;
    QVERIFY(control->OpenDocument(control.Folder().Write("whole.scd", whole), false));
    const QList<SCLDocument*> documents = control->GetDocumentList();
    const QString path = control.Folder().Path("cut.scd");

    for (int length = 0; length < whole.size(); ++length) {
        const QByteArray cut = whole.left(length);
        WriteFile(path, cut);
        control->SetLastError("an older error");

        QVERIFY2(!control->OpenDocument(path, true), cut.constData());
        QCOMPARE(control->GetLastError(), ReaderVerdict(cut));
    }
    QCOMPARE(control->GetDocumentList(), documents);
}

void SCLDocument_LoadTest::aPartialTreeStaysAfterAParseFailure()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL><IED name=\"A\"/><IED><LN></SCL>");
    SCLDocument document;
    QVERIFY(!document.Open(path));
    QCOMPARE(ElementText(document.Root()), QString("<SCL><IED name=\"A\"/><IED><LN/></IED></SCL>"));
    QCOMPARE(document.Root()->GetDocument(), &document);
}

void SCLDocument_LoadTest::nothingClearsTheLastError()
{
    TestControl control;
    QVERIFY(!control->OpenDocument(control.Folder().Write("bad.scd", "<SCL>"), false));
    const QString error = control->GetLastError();

    QVERIFY(!control->OpenDocument(control.Folder().Path("missing.scd"), false));
    QCOMPARE(control->GetLastError(), error);
    control.Open("<SCL/>");
    QCOMPARE(control->GetLastError(), error);
}

void SCLDocument_LoadTest::nothingOutsideTheFileIsRead_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QString>("tree");
    QTest::newRow("external entity in text")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY e SYSTEM \"%1\">]><SCL><Val>a&e;b</Val></SCL>")
        << "<SCL><Val>ab</Val></SCL>";
    QTest::newRow("external entity by an address")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY e SYSTEM \"file://%1\">]><SCL><Val>&e;</Val></SCL>")
        << "<SCL><Val/></SCL>";
    QTest::newRow("public external entity")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY e PUBLIC \"p\" \"%1\">]><SCL><Val>&e;</Val></SCL>")
        << "<SCL><Val/></SCL>";
    QTest::newRow("external document type")
        << QByteArray("<!DOCTYPE SCL SYSTEM \"%1\"><SCL><Val/></SCL>") << "<SCL><Val/></SCL>";
    QTest::newRow("external parameter entity")
        << QByteArray("<!DOCTYPE SCL [<!ENTITY % p SYSTEM \"%1\"> %p;]><SCL><Val/></SCL>")
        << "<SCL><Val/></SCL>";
    QTest::newRow("schema location")
        << QByteArray("<SCL xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" "
                      "i:noNamespaceSchemaLocation=\"%1\"/>")
        << "<SCL xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "i:noNamespaceSchemaLocation=\"%1\"/>";
}

// The outside is a pipe that no one writes to: whoever opened it to read would wait forever.
void SCLDocument_LoadTest::nothingOutsideTheFileIsRead()
{
    QFETCH(QByteArray, head);
    QFETCH(QString, tree);
    TestControl control;
    const QString pipe = control.Folder().Path("pipe");
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

    SCLElement* root = control.OpenRoot(QByteArray(head).replace("%1", pipe.toUtf8()));

    QCOMPARE(ElementText(root), tree.replace("%1", pipe));
}

void SCLDocument_LoadTest::theProgressTaskIsAnnouncedBeforeItStarts()
{
    TestControl control;
    const QString path = control.Folder().Write("a.scd", "<SCL/>");
    SCLDocument document;
    QStringList log;
    QFuture<QString> task;
    const auto note = [&](const QString& who, const QFuture<QString>& future,
                          const QString& title) {
        log += QStringLiteral("%1: %2, started %3, finished %4, range %5..%6")
                   .arg(who, title)
                   .arg(future.isStarted())
                   .arg(future.isFinished())
                   .arg(future.progressMinimum())
                   .arg(future.progressMaximum());
        task = future;
    };
    QObject context;
    QObject::connect(
        &document, &SCLDocument::sigFutaskTaskPrepared, &context,
        [&](const QFuture<QString>& future, const QString& title) { note("doc", future, title); });
    QObject::connect(control.Get(), &SCLDocControl::sigFutaskTaskPrepared, &context,
                     [&](const QFuture<QString>& future, const QString& title) {
                         note("control", future, title);
                     });

    QVERIFY(document.Open(path));

    QCOMPARE(log, QStringList({"control: Parsing, started 0, finished 0, range 0..0",
                               "doc: Parsing, started 0, finished 0, range 0..0"}));
    QVERIFY(task.isFinished());
    QVERIFY(!task.isCanceled());
    QCOMPARE(task.progressMinimum(), 0);
    QCOMPARE(task.progressMaximum(), 100);
    QCOMPARE(task.progressValue(), 100);
    QCOMPARE(task.resultCount(), 0);
}

void SCLDocument_LoadTest::progressFollowsTheOffsetOfElementEnds()
{
    const QList<int> expected = EndsAtFifthPercents(thousandCharacters, 1000);
    QCOMPARE(expected.last(), 100);
    QVERIFY(expected.contains(55));
    TestControl control;
    SCLDocument document;

    const Progress progress =
        OpenWatched(&document, control.Folder().Write("a.scd", thousandCharacters.toUtf8()));

    QCOMPARE(progress.values, expected);
    QCOMPARE(progress.task.progressValue(), 100);
}

void SCLDocument_LoadTest::progressStaysBehindInAFileOfWideCharacters()
{
    QString xml = thousandCharacters;
    xml.replace(QLatin1Char('a'), QChar(0x7AD9));
    const QByteArray bytes = xml.toUtf8();
    QVERIFY(bytes.size() > 1050);
    TestControl control;
    SCLDocument document;

    const Progress progress = OpenWatched(&document, control.Folder().Write("a.scd", bytes));

    QCOMPARE(progress.values, EndsAtFifthPercents(xml, double(bytes.size())));
    QVERIFY(progress.values.last() < 100);
    QCOMPARE(progress.task.progressValue(), 100);
}

void SCLDocument_LoadTest::aSlotSeesTheTreeHalfBuilt()
{
    TestControl control;
    SCLDocument document;
    const Progress progress =
        OpenWatched(&document, control.Folder().Write("a.scd", thousandCharacters.toUtf8()));
    QVERIFY(progress.children.first() > 0);
    QVERIFY(progress.children.first() < 10);
    QCOMPARE(progress.children.last(), 66);
}

void SCLDocument_LoadTest::theTaskOfAFailedLoadIsCancelledAndFinished_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("value");
    const QByteArray half = thousandCharacters.toUtf8().replace("</SCL>", "</IED>");
    QTest::newRow("fails at its end") << half << 95;
    QTest::newRow("no SCL file") << QByteArray("<html/>") << 0;
    QTest::newRow("empty") << QByteArray() << 0;
}

void SCLDocument_LoadTest::theTaskOfAFailedLoadIsCancelledAndFinished()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, value);
    TestControl control;
    SCLDocument document;

    const Progress progress = OpenWatched(&document, control.Folder().Write("a.scd", xml));

    QVERIFY(!progress.opened);
    QVERIFY(progress.task.isCanceled());
    QVERIFY(progress.task.isFinished());
    QVERIFY(!progress.task.isRunning());
    // A cancelled task takes no further value, so the end of the range is never reached.
    QCOMPARE(progress.task.progressValue(), value);
}

void SCLDocument_LoadTest::noTaskIsPreparedWhenThereIsNoFileToRead()
{
    TestControl control;
    SCLDocument document;
    SignalLog log(&document);
    QVERIFY(!document.Open(QString()));
    QVERIFY(!document.Open(control.Folder().Path("missing.scd")));
    QVERIFY(!document.Open(control.Folder().Path()));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLDocument_LoadTest::theWaitCursorIsShownWhileAFileLoads_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a good file") << thousandCharacters.toUtf8() << true;
    QTest::newRow("a bad file") << thousandCharacters.toUtf8().chopped(1) << false;
}

void SCLDocument_LoadTest::theWaitCursorIsShownWhileAFileLoads()
{
    QFETCH(QByteArray, xml);
    QFETCH(bool, opens);
    TestControl control;
    QList<Qt::CursorShape> shapes;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        shapes += cursor ? cursor->shape() : Qt::ArrowCursor;
    });
    timer.start(0);

    SCLDocument document;
    QCOMPARE(document.Open(control.Folder().Write("a.scd", xml)), opens);

    QVERIFY(!shapes.isEmpty());
    QCOMPARE(shapes.count(Qt::WaitCursor), shapes.count());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void SCLDocument_LoadTest::aMillionLevelsLoadAreCountedSearchedClonedAndClosed()
{
    constexpr int depth = 1000000;
    TestControl control;
    const QString path =
        control.Folder().Write("deep.scd", Nested(depth).replace("<P></P>", "<P><Val>x</Val></P>"));
    SCLDocument* document = control->OpenDocument(path, false);
    QVERIFY2(document, qPrintable(control->GetLastError()));
    SCLElement* root = document->Root();

    QCOMPARE(root->GetChildCount(true), depth + 1);
    SCLElement* value = root->FindChild("Val", QMap<QString, QString>(), true);
    QVERIFY(value);
    QCOMPARE(value->GetValue(), QString("x"));
    QCOMPARE(value->GetParent("SCL"), root);
    QCOMPARE(root->FindChildByType("Val", true), QList<SCLElement*>{value});

    SCLElement* clone = root->Clone(true);
    QCOMPARE(clone->GetChildCount(true), depth + 1);
    QVERIFY(root->AttachChild(clone, -1, false));
    QCOMPARE(root->GetChildCount(true), 2 * (depth + 1) + 1);

    QVERIFY(control->CloseDocument(document, false));
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>());
}

void SCLDocument_LoadTest::twentyThousandAttributesLoad()
{
    QByteArray xml = "<SCL";
    for (int i = 0; i < 20000; ++i)
        xml += " a" + QByteArray::number(i) + "=\"" + QByteArray::number(i) + "\"";
    xml += "/>";
    TestControl control;
    SCLElement* root = control.OpenRoot(xml);
    QCOMPARE(int(root->GetAttributeList().size()), 20000);
    QCOMPARE(root->GetAttribute("a19999"), QString("19999"));
}

void SCLDocument_LoadTest::sixtyFiveThousandTagsLoad()
{
    QByteArray xml = "<SCL>";
    for (int i = 0; i < 65000; ++i)
        xml += "<t" + QByteArray::number(i) + "/>";
    xml += "</SCL>";
    TestControl control;
    SCLElement* root = control.OpenRoot(xml);
    QCOMPARE(root->GetChildCount(false), 65000);
    QCOMPARE(root->GetChildList().last()->GetTag(), QString("t64999"));
    QCOMPARE(root->FindChildByType("t31234", false).size(), 1);
}

void SCLDocument_LoadTest::moreTagsThanThePoolHoldsFailPlainly()
{
    QByteArray xml = "<SCL>";
    for (int i = 0; i < 70000; ++i)
        xml += "<t" + QByteArray::number(i) + "/>";
    xml += "</SCL>";
    TestControl control;
    QCOMPARE(control->OpenDocument(control.Folder().Write("a.scd", xml), true), nullptr);
    QCOMPARE(control->GetDocumentList(), QList<SCLDocument*>());
    QVERIFY2(control->GetLastError().startsWith("Row 1, Col "),
             qPrintable(control->GetLastError()));
    QCOMPARE(Internal::SCLNamePool::Instance()->GetTagFromId(1), QString("SCL"));
}

void SCLDocument_LoadTest::anAttributeOfAHundredMegabytesLoads()
{
    constexpr int size = 100 * 1000 * 1000;
    TestControl control;
    const QString path = control.Folder().Path("wide.scd");
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray part(size / 100, 'x');
        file.write("<SCL desc=\"");
        for (int i = 0; i < 100; ++i)
            file.write(part);
        file.write("\"/>");
    }
    SCLDocument* document = control->OpenDocument(path, false);
    QVERIFY2(document, qPrintable(control->GetLastError()));
    const QString value = document->Root()->GetAttribute("desc");
    QCOMPARE(int(value.size()), size);
    QCOMPARE(int(value.count(QLatin1Char('x'))), size);
}

QTEST_MAIN(SCLDocument_LoadTest)
#include "SCLDocument_LoadTest.moc"
