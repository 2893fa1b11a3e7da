// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StationCompare.h"

#include "tests/support/TestControl.h"

#include <corvane/elements/SCLAttribute.h>

#include <QtTest>

using namespace Corvane::Test;
using Corvane::SCLDocument;
using Corvane::SCLElement;
using Corvane::Command::FirstDifference;

class StationCompareTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatSavingLosesIsNoDifference_data();
    void whatSavingLosesIsNoDifference();
    void allElseIsADifference_data();
    void allElseIsADifference();
    void whatNoFileCanHoldIsNoDifference_data();
    void whatNoFileCanHoldIsNoDifference();
    void whatTheWriterMakesOfATextIsForeseen_data();
    void whatTheWriterMakesOfATextIsForeseen();
    void anAttributeWithoutANameIsADifference();
    void anyDepthIsCompared();
};

void StationCompareTest::whatSavingLosesIsNoDifference_data()
{
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<QByteArray>("loaded");

    const auto row = [](const char* name, const char* saved, const char* loaded) {
        QTest::newRow(name) << QByteArray(saved) << QByteArray(loaded);
    };
    row("nothing", "<SCL a='1'><A/>x</SCL>", "<SCL a='1'><A/></SCL>");
    row("text beside children", "<SCL><A>x<B/>y</A></SCL>", "<SCL><A><B/></A></SCL>");
    row("order among tags", "<SCL><A/><B/><A n=''/></SCL>", "<SCL><B/><A/><A n=''/></SCL>");
    row("CR", "<SCL><A>x&#13;y</A></SCL>", "<SCL><A>x\ny</A></SCL>");
    row("CRLF", "<SCL><A>x&#13;&#10;y</A></SCL>", "<SCL><A>x\ny</A></SCL>");
    row("CR, CRLF", "<SCL><A>x&#13;&#13;&#10;y</A></SCL>", "<SCL><A>x\n\ny</A></SCL>");
    row("equal text", "<SCL><A> x </A></SCL>", "<SCL><A> x </A></SCL>");
}

void StationCompareTest::whatSavingLosesIsNoDifference()
{
    QFETCH(const QByteArray, saved);
    QFETCH(const QByteArray, loaded);
    TestControl control;

    QCOMPARE(FirstDifference(control.OpenRoot(saved), control.OpenRoot(loaded)), QString());
}

void StationCompareTest::allElseIsADifference_data()
{
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<QByteArray>("loaded");
    QTest::addColumn<QString>("where");

    const auto row = [](const char* name, const char* saved, const char* loaded,
                        const char* where) {
        QTest::newRow(name) << QByteArray(saved) << QByteArray(loaded) << QString(where);
    };
    row("child lost", "<SCL><A/><A/></SCL>", "<SCL><A/></SCL>", "SCL");
    row("child won", "<SCL><A/></SCL>", "<SCL><A/><A/></SCL>", "SCL");
    row("last child lost", "<SCL><A><B/></A></SCL>", "<SCL><A/></SCL>", "SCL/A");
    row("other tag", "<SCL><A/></SCL>", "<SCL><B/></SCL>", "SCL/A");
    row("other case", "<SCL><A/></SCL>", "<SCL><a/></SCL>", "SCL/A");
    row("attribute lost", "<SCL><A/><A n='1'/></SCL>", "<SCL><A/><A/></SCL>", "SCL/A[2]");
    row("empty attribute lost", "<SCL><A n=''/></SCL>", "<SCL><A/></SCL>", "SCL/A");
    row("attribute won", "<SCL><A/></SCL>", "<SCL><A n=''/></SCL>", "SCL/A");
    row("other attribute", "<SCL><A n=''/></SCL>", "<SCL><A m=''/></SCL>", "SCL/A");
    row("other value", "<SCL><A n='1'/></SCL>", "<SCL><A n='2'/></SCL>", "SCL/A");
    row("blank in a value", "<SCL><A n=' '/></SCL>", "<SCL><A n=''/></SCL>", "SCL/A");
    row("CR in a value", "<SCL><A n='&#13;'/></SCL>", "<SCL><A n='&#10;'/></SCL>", "SCL/A");
    row("order of attributes", "<SCL m='' n=''/>", "<SCL n='' m=''/>", "SCL");
    row("order in a group", "<SCL><A n='1'/><A n='2'/></SCL>", "<SCL><A n='2'/><A n='1'/></SCL>",
        "SCL/A");
    row("text lost", "<SCL><A>x</A></SCL>", "<SCL><A/></SCL>", "SCL/A");
    row("text won", "<SCL><A/></SCL>", "<SCL><A>x</A></SCL>", "SCL/A");
    row("text won beside children", "<SCL><A/></SCL>", "<SCL>x<A/></SCL>", "SCL");
    row("text kept beside children", "<SCL>x<A/></SCL>", "<SCL>x<A/></SCL>", "SCL");
    row("text trimmed", "<SCL><A> x</A></SCL>", "<SCL><A>x</A></SCL>", "SCL/A");
    row("text cut", "<SCL><A>xyz</A></SCL>", "<SCL><A>xy</A></SCL>", "SCL/A");
    row("LF lost", "<SCL><A>x\ny</A></SCL>", "<SCL><A>xy</A></SCL>", "SCL/A");
    row("LF doubled", "<SCL><A>x&#13;&#10;y</A></SCL>", "<SCL><A>x\n\ny</A></SCL>", "SCL/A");
    row("far below", "<SCL><A/><A><B/><B><C/><C>1</C></B></A></SCL>",
        "<SCL><A/><A><B/><B><C/><C>2</C></B></A></SCL>", "SCL/A[2]/B[2]/C[2]");
}

void StationCompareTest::allElseIsADifference()
{
    QFETCH(const QByteArray, saved);
    QFETCH(const QByteArray, loaded);
    QFETCH(const QString, where);
    TestControl control;

    QCOMPARE(FirstDifference(control.OpenRoot(saved), control.OpenRoot(loaded)), where);
}

void StationCompareTest::whatNoFileCanHoldIsNoDifference_data()
{
    QTest::addColumn<QString>("saved");
    QTest::addColumn<QString>("loaded");
    QTest::addColumn<bool>("equal");

    const QString pair = QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("controls") << QString("a\x01\x1f") + 'b' << "ab" << true;
    QTest::newRow("U+FFFE, U+FFFF") << QString(QChar(0xfffe)) + QChar(0xffff) + 'b' << "b" << true;
    QTest::newRow("lone high") << QString(QChar(0xd800)) + 'b' << "b" << true;
    QTest::newRow("lone low") << QString(QChar(0xdc00)) + 'b' << "b" << true;
    QTest::newRow("high at the end") << 'b' + QString(QChar(0xd800)) << "b" << true;
    QTest::newRow("nothing is left") << QString(QChar(1)) << QString() << true;
    QTest::newRow("pair kept") << pair << pair << true;
    QTest::newRow("pair lost") << pair + 'b' << "b" << false;
    QTest::newRow("delete lost") << QString("\x7f") + 'b' << "b" << false;
    QTest::newRow("U+FFFD lost") << QString(QChar(0xfffd)) + 'b' << "b" << false;
    QTest::newRow("control kept") << QString("\x01") + 'b' << QString("\x01") + 'b' << false;
}

void StationCompareTest::whatNoFileCanHoldIsNoDifference()
{
    QFETCH(const QString, saved);
    QFETCH(const QString, loaded);
    QFETCH(const bool, equal);
    TestControl control;
    SCLElement* before = control.OpenRoot("<SCL a=''/>");
    SCLElement* after = control.OpenRoot("<SCL a=''/>");

    before->SetValue(saved, false);
    after->SetValue(loaded, false);
    QCOMPARE(FirstDifference(before, after).isEmpty(), equal);

    before->SetValue(QString(), false);
    after->SetValue(QString(), false);
    before->SetAttribute("a", saved, false);
    after->SetAttribute("a", loaded, false);
    QCOMPARE(FirstDifference(before, after).isEmpty(), equal);
}

void StationCompareTest::whatTheWriterMakesOfATextIsForeseen_data()
{
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
    row("blanks", "   ");
    row("white space of XML", " \t\r\n\r");
    row("white space beyond XML", QString(QChar(0x85)) + QChar(0xa0) + QChar(0x2028));
    row("blanks around", "  x \t");
    row("blanks before an entity", "   <x");
    row("blanks between entities", "&  &   <");
    row("blank lines", "\n\n  x\n\n");
    row("line ends", "\r\r\n\n\rx\r");
    row("markup", "<![CDATA[ ]]> <!-- --> <?p?> &#10; ]]>");
    row("quotes", "\"'`");
    row("form feed and other controls", QString("\f\v\b\x1b") + QChar(0));
    row("blanks and controls", QString(" \x01 "));
    row("controls within a line end", QString("x\r\x01\ny"));
    row("surrogates", QString(QChar(0xd800)) + QChar(0xdbff) + QChar(0xdc00) + QChar(0xdc00));
    row("non-characters", QString(QChar(0xfffe)) + QChar(0xffff) + QChar(0xfdd0));
    row("byte order mark", QString(QChar(0xfeff)) + 'x');
    row("long", QString(70000, 'x') + "  " + QString(70000, ' ') + "y");
}

// The one who knows what a file keeps is the library, so it is asked.
void StationCompareTest::whatTheWriterMakesOfATextIsForeseen()
{
    QFETCH(const QString, text);
    TestControl control;
    SCLDocument* document = control.Create();
    SCLElement* element = document->Root()->CreateChild("A", -1, false);
    element->SetValue(text, false);
    element->SetAttribute("a", text, false);
    document->Root()->CreateChild("A", -1, false)->SetValue("x" + text + "y", false);
    const QString file = control.Folder().Path("saved.scd");
    control->RegisterSchema(control.Folder().Write("none.xsd", ""));
    QVERIFY(document->SaveAs(file, false, false));
    SCLDocument loaded;
    QVERIFY(loaded.Open(file));

    QCOMPARE(FirstDifference(document->Root(), loaded.Root()), QString());
}

void StationCompareTest::anAttributeWithoutANameIsADifference()
{
    TestControl control;
    SCLElement* before = control.OpenRoot("<SCL/>");
    before->SetAttribute(QString(), "x", false);

    QCOMPARE(FirstDifference(before, control.OpenRoot("<SCL/>")), QStringLiteral("SCL"));
}

void StationCompareTest::anyDepthIsCompared()
{
    constexpr int depth = 300000;
    const auto nested = [](const QByteArray& inner) {
        return "<SCL>" + QByteArray("<a>").repeated(depth) + inner +
               QByteArray("</a>").repeated(depth) + "</SCL>";
    };
    TestControl control;
    SCLElement* saved = control.OpenRoot(nested("1"));

    QCOMPARE(FirstDifference(saved, control.OpenRoot(nested("1"))), QString());
    const QString difference = FirstDifference(saved, control.OpenRoot(nested("2")));
    QCOMPARE(difference.count('/'), depth);
}

QTEST_GUILESS_MAIN(StationCompareTest)
#include "StationCompareTest.moc"
