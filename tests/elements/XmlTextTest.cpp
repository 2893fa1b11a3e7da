// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/XmlText.h>

#include <QObject>
#include <QTest>

using Corvane::Internal::XmlName;
using Corvane::Internal::XmlText;

namespace
{

QString Character(uint codePoint)
{
    if (!QChar::requiresSurrogates(codePoint))
        return QString(QChar(static_cast<ushort>(codePoint)));
    return QString(QChar(QChar::highSurrogate(codePoint))) + QChar(QChar::lowSurrogate(codePoint));
}

// Char of XML 1.0.
bool IsCharacterOfXml(uint c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

} // namespace

class XmlTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCharacterIsKeptOrLeftOut();
    void legalTextComesBackUncopied_data();
    void legalTextComesBackUncopied();
    void illegalCharactersAreLeftOut_data();
    void illegalCharactersAreLeftOut();

    void namesBecomeNamesOfXml_data();
    void namesBecomeNamesOfXml();
    void rangesOfNameCharacters_data();
    void rangesOfNameCharacters();
};

void XmlTextTest::everyCharacterIsKeptOrLeftOut()
{
    for (uint c = 0; c <= 0x10FFFF; ++c) {
        const QString character = Character(c);
        const QString expected = IsCharacterOfXml(c) ? character : QString();
        if (XmlText(character) != expected)
            QFAIL(qPrintable(QStringLiteral("U+%1").arg(c, 4, 16)));
    }
}

void XmlTextTest::legalTextComesBackUncopied_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QString("IED virtual terminal");
    QTest::newRow("reserved") << QString("<a b='c'>&</a>");
    QTest::newRow("tab and line breaks") << QString("a\tb\r\nc");
    QTest::newRow("foreign letters") << QString::fromUtf8("\xE6\x96\xAD");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("a\xF0\x9D\x84\x9E");
    QTest::newRow("U+FFFD") << QString(QChar(0xFFFD));
}

void XmlTextTest::legalTextComesBackUncopied()
{
    QFETCH(QString, text);
    const QString result = XmlText(text);
    QCOMPARE(result, text);
    QCOMPARE(result.constData(), text.constData());
}

void XmlTextTest::illegalCharactersAreLeftOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const QString clef = QString::fromUtf8("\xF0\x9D\x84\x9E");
    QTest::newRow("null text") << QString() << QString();
    QTest::newRow("only illegal") << QString(3, QChar(0)) << QString();
    QTest::newRow("first") << QChar(0x1) + QString("ab") << QString("ab");
    QTest::newRow("last") << QString("ab") + QChar(0xFFFE) << QString("ab");
    QTest::newRow("between") << QString("a") + QChar(0xFFFF) + "b" << QString("ab");
    QTest::newRow("high surrogate last") << QString("ab") + QChar(0xD834) << QString("ab");
    QTest::newRow("high surrogate before a letter")
        << QString(QChar(0xD834)) + "ab" << QString("ab");
    QTest::newRow("high surrogate before a character") << QString(QChar(0xD834)) + clef << clef;
    QTest::newRow("low surrogate after a character") << clef + QChar(0xDD1E) << clef;
    QTest::newRow("after a legal character") << clef + QChar(0x0) + "b" << clef + "b";
}

void XmlTextTest::illegalCharactersAreLeftOut()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(XmlText(text), expected);
}

void XmlTextTest::namesBecomeNamesOfXml_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "lnClass"
                           << "lnClass";
    QTest::newRow("prefix") << "xsi:schemaLocation"
                            << "xsi:schemaLocation";
    QTest::newRow("all marks") << "_:a-.9"
                               << "_:a-.9";
    QTest::newRow("empty") << ""
                           << "_";
    QTest::newRow("null") << QString() << "_";
    QTest::newRow("blank") << " "
                           << "_";
    QTest::newRow("blank between") << "a b"
                                   << "a_b";
    QTest::newRow("digit first") << "9a"
                                 << "_9a";
    QTest::newRow("dot first") << ".a"
                               << "_.a";
    QTest::newRow("hyphen first") << "-"
                                  << "_-";
    QTest::newRow("illegal first, digit second") << " 9"
                                                 << "_9";
    QTest::newRow("half a character") << QString(QChar(0xD834)) + "a"
                                      << "_a";
    QTest::newRow("beyond the first plane")
        << QString::fromUtf8("\xF0\x9D\x84\x9E") << QString::fromUtf8("\xF0\x9D\x84\x9E");
    QTest::newRow("beyond the last name character") << Character(0xF0000) + "a"
                                                    << "_a";
}

void XmlTextTest::namesBecomeNamesOfXml()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(XmlName(name), expected);
    QCOMPARE(XmlName(XmlName(name)), expected);
}

void XmlTextTest::rangesOfNameCharacters_data()
{
    QTest::addColumn<uint>("codePoint");
    QTest::addColumn<bool>("starts");
    QTest::addColumn<bool>("follows");
    const struct {
        uint codePoint;
        bool starts;
        bool follows;
    } characters[] = {
        {'A', true, true},      {'Z', true, true},       {'[', false, false},
        {'@', false, false},    {'a', true, true},       {'z', true, true},
        {'{', false, false},    {'`', false, false},     {'0', false, true},
        {'9', false, true},     {'/', false, false},     {';', false, false},
        {0xB7, false, true},    {0xB8, false, false},    {0xBF, false, false},
        {0xC0, true, true},     {0xD6, true, true},      {0xD7, false, false},
        {0xD8, true, true},     {0xF6, true, true},      {0xF7, false, false},
        {0xF8, true, true},     {0x2FF, true, true},     {0x300, false, true},
        {0x36F, false, true},   {0x370, true, true},     {0x37D, true, true},
        {0x37E, false, false},  {0x37F, true, true},     {0x1FFF, true, true},
        {0x2000, false, false}, {0x200B, false, false},  {0x200C, true, true},
        {0x200D, true, true},   {0x200E, false, false},  {0x203E, false, false},
        {0x203F, false, true},  {0x2040, false, true},   {0x2041, false, false},
        {0x206F, false, false}, {0x2070, true, true},    {0x218F, true, true},
        {0x2190, false, false}, {0x2BFF, false, false},  {0x2C00, true, true},
        {0x2FEF, true, true},   {0x2FF0, false, false},  {0x3000, false, false},
        {0x3001, true, true},   {0xD7FF, true, true},    {0xE000, false, false},
        {0xF8FF, false, false}, {0xF900, true, true},    {0xFDCF, true, true},
        {0xFDD0, false, false}, {0xFDEF, false, false},  {0xFDF0, true, true},
        {0xFFFD, true, true},   {0xFFFE, false, false},  {0x10000, true, true},
        {0xEFFFF, true, true},  {0xF0000, false, false}, {0x10FFFF, false, false},
    };
    for (const auto& character : characters)
        QTest::addRow("U+%04X", character.codePoint)
            << character.codePoint << character.starts << character.follows;
}

void XmlTextTest::rangesOfNameCharacters()
{
    QFETCH(uint, codePoint);
    QFETCH(bool, starts);
    QFETCH(bool, follows);
    const QString character = Character(codePoint);
    const QString first = starts ? character : follows ? "_" + character : QString("_");
    QCOMPARE(XmlName(character), first);
    QCOMPARE(XmlName("a" + character), "a" + (follows ? character : QString("_")));
}

QTEST_APPLESS_MAIN(XmlTextTest)
#include "XmlTextTest.moc"
