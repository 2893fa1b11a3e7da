// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>

#include <QCoreApplication>
#include <QFutureInterface>
#include <QObject>
#include <QTest>
#include <QXmlStreamReader>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::SCLNamePool;

namespace
{

using Owned = std::unique_ptr<SCLElement>;

Owned Detached(const QString& tag)
{
    return std::make_unique<SCLElement>(tag, nullptr, nullptr);
}

// What a reader of XML sees in a text: tags with their attributes, and the text between them. The
// error instead if the text is not well-formed.
QString Reread(const QString& xml)
{
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    QString seen;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            seen += QLatin1Char('<') + reader.qualifiedName().toString();
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute& attribute : attributes)
                seen += QLatin1Char(' ') + attribute.qualifiedName().toString() +
                        QStringLiteral("=\"") + attribute.value().toString().toHtmlEscaped() +
                        QLatin1Char('"');
            seen += QLatin1Char('>');
        } else if (reader.isEndElement()) {
            seen += QStringLiteral("</") + reader.qualifiedName().toString() + QLatin1Char('>');
        } else if (reader.isCharacters()) {
            seen += reader.text().toString().toHtmlEscaped();
        }
    }
    return reader.hasError() ? QStringLiteral("error: ") + reader.errorString() : seen;
}

// The one attribute and the text of a single element, as a reader sees them.
struct Content {
    QString value;
    QString text;
};

Content ContentOf(const QString& xml)
{
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    reader.readNextStartElement();
    const QString value = reader.attributes().value(QStringLiteral("a")).toString();
    return {value, reader.readElementText()};
}

QString Formatted(SCLElement* element)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
    writer.writeStartDocument();
    element->WriteToXML(writer, nullptr, true);
    writer.writeEndDocument();
    return QString::fromUtf8(bytes);
}

} // namespace

class SCLElement_XmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anElementIsWrittenWithAllItHolds_data();
    void anElementIsWrittenWithAllItHolds();
    void childrenStandInGroups();
    void attributesStandInTheirOrder();
    void prefixesStayPartOfTheName();
    void theValueOfAnElementWithChildrenIsNotWritten();
    void anEmptyGroupCountsAsNoChildren();
    void withoutChildrenOnlyTheTagAndTheAttributesAreWritten();
    void formattingIndentsByTwoAndLeavesTextAlone();
    void nothingIsWrittenBesideTheElement();
    void severalElementsGoToOneWriter();
    void writingChangesNothing();

    void textReadsBackEqual_data();
    void textReadsBackEqual();
    void charactersThatXmlCannotHoldAreLeftOut_data();
    void charactersThatXmlCannotHoldAreLeftOut();
    void namesBecomeXmlNames_data();
    void namesBecomeXmlNames();
    void attributesWithoutANameAreLeftOut();
    void onlyTheFirstOfEqualAttributesIsWritten();
    void attributesWhoseWrittenNamesAreEqualAreWrittenOnce();
    void elementsOfOneRunDoNotShareTheirAttributes();
    void namesOfAFullPoolStayWellFormed();

    void eachElementIsOneStepOfProgress();
    void progressGoesOnFromWhereItStands();
    void eventsAreProcessedWithProgressAlone();

    void threeThousandLevelsReadBack();
    void aMillionLevelsAreWritten();
};

void SCLElement_XmlTest::anElementIsWrittenWithAllItHolds_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("alone") << QByteArray("<SCL/>");
    QTest::newRow("attributes") << QByteArray("<SCL b=\"1\" a=\"\"/>");
    QTest::newRow("text") << QByteArray("<SCL>x y</SCL>");
    QTest::newRow("blanks around the text") << QByteArray("<SCL>  x\n </SCL>");
    QTest::newRow("attributes and text") << QByteArray("<SCL a=\"1\">x</SCL>");
    QTest::newRow("children") << QByteArray("<SCL><IED name=\"A\"><LN/><LN/></IED><P/></SCL>");
    QTest::newRow("text below") << QByteArray("<SCL><IED><Val>1</Val><Val/></IED></SCL>");
    QTest::newRow("back up and down")
        << QByteArray("<SCL><A><B><C/></B></A><A><B/><B><C>x</C></B></A></SCL>");
}

void SCLElement_XmlTest::anElementIsWrittenWithAllItHolds()
{
    QFETCH(QByteArray, xml);
    TestControl control;
    QCOMPARE(WrittenText(control.OpenRoot(xml)), QString::fromUtf8(xml));
}

void SCLElement_XmlTest::childrenStandInGroups()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><A n='1'/><B n='2'/><A n='3'/><B n='4'/></SCL>");
    QCOMPARE(WrittenText(root),
             QString("<SCL><A n=\"1\"/><A n=\"3\"/><B n=\"2\"/><B n=\"4\"/></SCL>"));
}

void SCLElement_XmlTest::attributesStandInTheirOrder()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL z='1' a='2' m='3'/>");
    root->SetAttribute("b", "4", false);
    root->SetAttribute("a", "5", false);
    QCOMPARE(WrittenText(root), QString("<SCL z=\"1\" a=\"5\" m=\"3\" b=\"4\"/>"));
}

void SCLElement_XmlTest::prefixesStayPartOfTheName()
{
    TestControl control;
    const QByteArray xml("<SCL xmlns=\"urn:a\" xmlns:sxy=\"urn:b\"><IED sxy:x=\"1\"/>"
                         "<sxy:Extra undeclared:y=\"2\"/><undeclared:Tag/></SCL>");
    QCOMPARE(WrittenText(control.OpenRoot(xml)), QString::fromUtf8(xml));
}

void SCLElement_XmlTest::theValueOfAnElementWithChildrenIsNotWritten()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>before<P>inside</P>after</SCL>");
    QCOMPARE(root->GetValue(), QString("beforeafter"));
    QCOMPARE(WrittenText(root), QString("<SCL><P>inside</P></SCL>"));
}

void SCLElement_XmlTest::anEmptyGroupCountsAsNoChildren()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->SetValue("x", false);
    ied->RemoveChild(ied->CreateChild("LN", -1, false), false);
    ied->CreateChild("P", 1, false);
    QCOMPARE(WrittenText(ied.get()), QString("<IED>x</IED>"));
}

void SCLElement_XmlTest::withoutChildrenOnlyTheTagAndTheAttributesAreWritten()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL a='1' b='2'>x<IED/></SCL>");
    QCOMPARE(WrittenText(root, false), QString("<SCL a=\"1\" b=\"2\"/>"));
    root->ClearChild();
    QCOMPARE(WrittenText(root, false), QString("<SCL a=\"1\" b=\"2\"/>"));
}

void SCLElement_XmlTest::formattingIndentsByTwoAndLeavesTextAlone()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><IED name='A'><LN/></IED><Val> x </Val><P a='1'/></SCL>");
    QCOMPARE(Formatted(root), QString("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                      "<SCL>\n"
                                      "  <IED name=\"A\">\n"
                                      "    <LN/>\n"
                                      "  </IED>\n"
                                      "  <Val> x </Val>\n"
                                      "  <P a=\"1\"/>\n"
                                      "</SCL>\n"));
}

void SCLElement_XmlTest::nothingIsWrittenBesideTheElement()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><A/><IED name='A'><LN/></IED><IED/></SCL>");
    QCOMPARE(WrittenText(At(root, "IED")), QString("<IED name=\"A\"><LN/></IED>"));
    QCOMPARE(WrittenText(At(root, "IED/LN")), QString("<LN/>"));
}

void SCLElement_XmlTest::severalElementsGoToOneWriter()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED n='1'><LN/></IED><IED n='2'>x</IED></SCL>");
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.writeStartElement("all");
    At(root, "IED[0]")->WriteToXML(writer, nullptr, true);
    At(root, "IED[0]")->WriteToXML(writer, nullptr, false);
    At(root, "IED[1]")->WriteToXML(writer, nullptr, true);
    writer.writeEndElement();
    writer.writeEndDocument();
    QCOMPARE(QString::fromUtf8(bytes).trimmed(),
             QString("<all><IED n=\"1\"><LN/></IED><IED n=\"1\"/><IED n=\"2\">x</IED></all>"));
}

void SCLElement_XmlTest::writingChangesNothing()
{
    TestControl control;
    SCLDocument* document = control.Open("<SCL a='1'>x<IED><LN/></IED><P/></SCL>");
    const QString before = ElementText(document->Root());
    const QString once = WrittenText(document->Root());
    QCOMPARE(WrittenText(document->Root()), once);
    QCOMPARE(ElementText(document->Root()), before);
    QVERIFY(!document->GetModified());
}

void SCLElement_XmlTest::textReadsBackEqual_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("reserved") << QString("<a href='b'>&amp; \"c\" ]]> --></a>");
    QTest::newRow("blanks") << QString("  a  b  ");
    QTest::newRow("line breaks and tabs") << QString("a\nb\tc\n");
    QTest::newRow("references as text") << QString("&#10;&lt;&unknown;");
    QTest::newRow("foreign letters") << QString::fromUtf8("\xE6\x96\xAD\xC3\xBC\xC2\xA0");
    QTest::newRow("beyond the first plane")
        << QString::fromUtf8("\xF0\x9D\x84\x9E\xF4\x8F\xBF\xBF");
    QTest::newRow("edges of what XML holds")
        << QString(QChar(0x20)) + QChar(0x7E) + QChar(0xD7FF) + QChar(0xE000) + QChar(0xFFFD);
    QTest::newRow("long") << QString(200000, QLatin1Char('&'));
}

void SCLElement_XmlTest::textReadsBackEqual()
{
    QFETCH(QString, text);
    const SCLNamePool pool;
    const Owned val = Detached("Val");
    val->SetAttribute("a", text, false);
    val->SetValue(text, false);
    const Content content = ContentOf(WrittenText(val.get()));
    QCOMPARE(content.value, text);
    QCOMPARE(content.text, text);
}

void SCLElement_XmlTest::charactersThatXmlCannotHoldAreLeftOut_data()
{
    QTest::addColumn<QString>("text");
    const auto between = [](const QString& middle) {
        return QStringLiteral("a") + middle + QStringLiteral("b");
    };
    for (ushort c : {0x0, 0x1, 0x8, 0xB, 0xC, 0xE, 0x1B, 0x1F, 0xFFFE, 0xFFFF})
        QTest::addRow("U+%04X", c) << between(QChar(c));
    QTest::newRow("high surrogate alone") << between(QChar(0xD834));
    QTest::newRow("low surrogate alone") << between(QChar(0xDD1E));
    QTest::newRow("surrogates in the wrong order")
        << between(QString(QChar(0xDD1E)) + QChar(0xD834));
    QTest::newRow("two high surrogates") << between(QString(2, QChar(0xDBFF)));
    QTest::newRow("several") << between(QString(5, QChar(0)) + QChar(0xFFFF) + QChar(0x1));
    QTest::newRow("high surrogate at the end") << QStringLiteral("ab") + QChar(0xD834);
    QTest::newRow("low surrogate at the start") << QChar(0xDD1E) + QStringLiteral("ab");
}

void SCLElement_XmlTest::charactersThatXmlCannotHoldAreLeftOut()
{
    QFETCH(QString, text);
    const SCLNamePool pool;
    const Owned root = Detached("SCL");
    SCLElement* val = root->CreateChild("Val", -1, false);
    val->SetAttribute("a", text, false);
    val->SetValue(text, false);
    root->CreateChild("Val", -1, false)->SetValue("after", false);
    QCOMPARE(Reread(WrittenText(root.get())),
             QString("<SCL><Val a=\"ab\">ab</Val><Val>after</Val></SCL>"));
    // The tree keeps what it was given.
    QCOMPARE(val->GetValue(), text);
    QCOMPARE(val->GetAttribute("a"), text);
}

void SCLElement_XmlTest::namesBecomeXmlNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("written");
    QTest::newRow("plain") << "lnClass"
                           << "lnClass";
    QTest::newRow("with a prefix") << "sxy:x"
                                   << "sxy:x";
    QTest::newRow("with digits and marks") << "a-1.b_2"
                                           << "a-1.b_2";
    QTest::newRow("foreign letters")
        << QString::fromUtf8("\xE5\x90\x8D\xC3\xA9") << QString::fromUtf8("\xE5\x90\x8D\xC3\xA9");
    QTest::newRow("blank") << "a b"
                           << "a_b";
    QTest::newRow("markup") << "a><b c='"
                            << "a__b_c__";
    QTest::newRow("quote and ampersand") << "a\"&"
                                         << "a__";
    QTest::newRow("slash and equals") << "a/="
                                      << "a__";
    QTest::newRow("digit first") << "1a"
                                 << "_1a";
    QTest::newRow("hyphen first") << "-a"
                                  << "_-a";
    QTest::newRow("control character") << QStringLiteral("a") + QChar(1) << "a_";
    QTest::newRow("no character") << QStringLiteral("a") + QChar(0xFFFF) << "a_";
    QTest::newRow("half a character") << QStringLiteral("a") + QChar(0xD834) << "a_";
    QTest::newRow("blank only") << " "
                                << "_";
}

void SCLElement_XmlTest::namesBecomeXmlNames()
{
    QFETCH(QString, name);
    QFETCH(QString, written);
    const SCLNamePool pool;
    const Owned root = Detached("SCL");
    root->CreateChild(name, -1, false)->SetAttribute(name, "x", false);
    const QString xml = WrittenText(root.get());
    QCOMPARE(Reread(xml), QStringLiteral("<SCL><%1 %1=\"x\"></%1></SCL>").arg(written));
    QCOMPARE(root->GetFirstChild(name)->GetAttribute(name), QString("x"));
}

void SCLElement_XmlTest::attributesWithoutANameAreLeftOut()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->SetAttributeList({"", "name", ""}, {"x", "A", "y"});
    QCOMPARE(WrittenText(ied.get()), QString("<IED name=\"A\"/>"));
}

void SCLElement_XmlTest::onlyTheFirstOfEqualAttributesIsWritten()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->SetAttributeList({"name", "desc", "name", "name", "desc"}, {"A", "D", "B", "C", "E"});
    QCOMPARE(WrittenText(ied.get()), QString("<IED name=\"A\" desc=\"D\"/>"));
}

void SCLElement_XmlTest::attributesWhoseWrittenNamesAreEqualAreWrittenOnce()
{
    const SCLNamePool pool;
    const Owned ied = Detached("IED");
    ied->SetAttributeList({"a b", "a_b", "a\tb", "c"}, {"1", "2", "3", "4"});
    QCOMPARE(Reread(WrittenText(ied.get())), QString("<IED a_b=\"1\" c=\"4\"></IED>"));
}

void SCLElement_XmlTest::elementsOfOneRunDoNotShareTheirAttributes()
{
    TestControl control;
    const QByteArray xml("<SCL n=\"1\"><LN n=\"1\"/><LN n=\"1\"><DOI n=\"1\"/></LN></SCL>");
    QCOMPARE(WrittenText(control.OpenRoot(xml)), QString::fromUtf8(xml));
}

void SCLElement_XmlTest::namesOfAFullPoolStayWellFormed()
{
    SCLNamePool pool;
    const Owned root = Detached("SCL");
    root->CreateChild("IED", -1, false);
    for (int i = 0; i < 65535; ++i) {
        pool.AddTagToNamePool(QString::number(i));
        pool.AddAttToNamePool(QString::number(i));
    }
    const Owned refused = Detached("refused");
    refused->SetAttributeList({"refused", "17"}, {"x", "y"});
    QCOMPARE(Reread(WrittenText(refused.get())), QString("<_ _17=\"y\"></_>"));
    At(root.get(), "IED")->SetAttributeList({"65000", "refused"}, {"x", "y"});
    root->CreateChild("65000", -1, false);
    QCOMPARE(Reread(WrittenText(root.get())),
             QString("<SCL><IED _65000=\"x\"></IED><_65000></_65000></SCL>"));
}

void SCLElement_XmlTest::eachElementIsOneStepOfProgress()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED><LN/><LN/></IED><IED>x</IED></SCL>");
    for (bool withChildren : {true, false}) {
        QFutureInterface<QString> future;
        future.setProgressRange(0, 100);
        future.reportStarted();
        future.setProgressValue(0);
        QByteArray bytes;
        QXmlStreamWriter writer(&bytes);
        root->WriteToXML(writer, &future, withChildren);
        QCOMPARE(future.progressValue(), withChildren ? 5 : 1);
        future.reportFinished();
    }
}

void SCLElement_XmlTest::progressGoesOnFromWhereItStands()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED/></SCL>");
    QFutureInterface<QString> future;
    future.setProgressRange(0, 100);
    future.reportStarted();
    future.setProgressValue(40);
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    root->WriteToXML(writer, &future, true);
    QCOMPARE(future.progressValue(), 42);
    root->WriteToXML(writer, &future, true);
    QCOMPARE(future.progressValue(), 44);
    future.reportFinished();
}

void SCLElement_XmlTest::eventsAreProcessedWithProgressAlone()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><IED/></SCL>");
    int arrived = 0;
    const auto post = [&] {
        QMetaObject::invokeMethod(
            this, [&arrived] { ++arrived; }, Qt::QueuedConnection);
    };
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);

    post();
    root->WriteToXML(writer, nullptr, true);
    QCOMPARE(arrived, 0);
    QCoreApplication::processEvents();
    QCOMPARE(arrived, 1);

    QFutureInterface<QString> future;
    future.setProgressRange(0, 100);
    future.reportStarted();
    post();
    root->WriteToXML(writer, &future, true);
    QCOMPARE(arrived, 2);
    future.reportFinished();
}

void SCLElement_XmlTest::threeThousandLevelsReadBack()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL/>");
    SCLElement* lowest = root;
    for (int i = 0; i < 3000; ++i) {
        lowest = lowest->CreateChild("N", -1, false);
        lowest->SetAttribute("n", QString::number(i), false);
    }
    lowest->SetValue("lowest", false);
    SCLElement* again = control.OpenRoot(WrittenText(root).toUtf8());
    QCOMPARE(again->GetChildCount(true), 3000);
    QCOMPARE(ElementText(again), ElementText(root));
    SCLElement* formatted = control.OpenRoot(Formatted(root).toUtf8());
    QVERIFY(ElementText(formatted) == ElementText(root));
}

void SCLElement_XmlTest::aMillionLevelsAreWritten()
{
    const SCLNamePool pool;
    const Owned root = Detached("SCL");
    constexpr int depth = 1000000;
    const QString tag = QStringLiteral("N");
    SCLElement* lowest = root.get();
    for (int i = 0; i < depth; ++i)
        lowest = lowest->CreateChild(tag, -1, false);
    const QString xml = WrittenText(root.get());
    QCOMPARE(int(xml.count("<N>")), depth - 1);
    QCOMPARE(int(xml.count("</N>")), depth - 1);
    QCOMPARE(int(xml.count("<N/>")), 1);
    QVERIFY(xml.startsWith("<SCL><N>") && xml.endsWith("</N></SCL>"));
}

QTEST_MAIN(SCLElement_XmlTest)
#include "SCLElement_XmlTest.moc"
