// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcContent.h>

#include "tests/support/CrcRun.h"

#include <corvane/crc/Crc32.h>
#include <corvane/crc/CrcElement.h>

#include <QDateTime>
#include <QTest>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <random>

using namespace Corvane;
using Corvane::Internal::CanonicalCrc;
using Corvane::Internal::CrcAttribute;
using Corvane::Internal::CrcElement;
using Corvane::Internal::PrintedCrc;
using Corvane::Internal::ReadableContent;

namespace
{

constexpr auto g_canonical = CrcGenerator::GeneratorCanonical;
constexpr auto g_readable = CrcGenerator::GeneratorReadable;
constexpr auto g_both = CrcGenerator::GeneratorBoth;

// A root whose parts the tests choose.
class Tree
{
public:
    explicit Tree(const QString& name = "IED", const QString& text = QString())
        : m_root(g_both, name, text)
    {
    }

    Tree& With(const QString& name, const QString& value, CrcGenerator::GeneratorType type = g_both)
    {
        m_root.AddAttribute(type, name, value);
        return *this;
    }
    CrcElement* Add(const QString& name, const QString& text = QString(),
                    CrcGenerator::GeneratorType type = g_both)
    {
        m_root.children.append(new CrcElement(type, name, text));
        return m_root.children.last();
    }

    CrcElement* Root() { return &m_root; }
    QString Canonical() const
    {
        QByteArray content;
        CanonicalCrc(&m_root, &content);
        return QString::fromUtf8(content);
    }
    QString Readable(CrcGenerator::GeneratorType type = g_readable) const
    {
        return Test::WithoutTime(ReadableContent(&m_root, type, 0xABC));
    }

private:
    CrcElement m_root;
};

QString WithDeclaration(const QString& text)
{
    return R"(<?xmlversion="1.0"encoding="UTF-8"?>)" + text;
}

// The canonical form by a writer, whose blanks are taken out afterwards.
void WriteByWriter(const CrcElement* element, QXmlStreamWriter& writer)
{
    const auto marked = [](QString text) { return text.replace(" ", "@wspace@"); };
    writer.writeStartElement(element->name);
    for (const CrcAttribute* attribute : element->attributes) {
        if (attribute->generatorType != g_readable)
            writer.writeAttribute(attribute->name, marked(attribute->value));
    }
    for (const CrcElement* child : element->children) {
        if (child->generatorType != g_readable)
            WriteByWriter(child, writer);
    }
    if (element->children.isEmpty() && !element->text.isEmpty())
        writer.writeCharacters(marked(element->text));
    writer.writeEndElement();
}

QByteArray CanonicalByWriter(const CrcElement* root)
{
    QByteArray bytes;
    {
        QXmlStreamWriter writer(&bytes);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        writer.setCodec("UTF-8");
#endif
        writer.writeStartDocument();
        WriteByWriter(root, writer);
        writer.writeEndDocument();
    }
    return bytes.trimmed().replace(" ", "").replace("@wspace@", " ");
}

// Random trees of few names and of texts in which everything meets everything.
class RandomTrees
{
public:
    explicit RandomTrees(unsigned int seed) : m_random(seed) {}

    void Fill(CrcElement* element, int depth)
    {
        for (int i = UpTo(4); i > 0; --i)
            element->AddAttribute(Type(), QStringLiteral("a%1").arg(i), Text());
        if (depth == 0)
            return;
        for (int i = UpTo(4); i > 0; --i) {
            element->children.append(new CrcElement(Type(), Name(), Text()));
            Fill(element->children.last(), depth - 1);
        }
    }

    QString Text()
    {
        static const QStringList pieces = {
            " ",   "  ",  "@",    "@wspace@", "@wspace", "wspace@", "<",  ">",  "&",
            "\"",  "'",   "\t",   "\n",       "\r",      "a",       "é",  "线", "Ω",
            "x y", "]]>", "&lt;", "\u00A0",   "\u2028",  "",        "@@", "0",  "end"};
        QString text;
        for (int i = UpTo(6); i > 0; --i)
            text += UpTo(40) == 0 ? QString::fromUcs4(U"\U0001F50C", 1)
                                  : pieces.at(UpTo(static_cast<int>(pieces.size())));
        return text;
    }

private:
    int UpTo(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    CrcGenerator::GeneratorType Type()
    {
        static constexpr CrcGenerator::GeneratorType types[] = {g_canonical, g_readable, g_both,
                                                                g_both};
        return types[UpTo(4)];
    }
    QString Name()
    {
        static const QStringList names = {"FCDA", "DOI", "a-b", "x:y", "_u", "n.1", "线"};
        return names.at(UpTo(static_cast<int>(names.size())));
    }

    std::mt19937 m_random;
};

} // namespace

class CrcContentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCrcPrintsAsEightUpperCaseDigits_data();
    void aCrcPrintsAsEightUpperCaseDigits();
    void theCanonicalFormIsExact();
    void onlyValuesKeepTheirBlanks();
    void aLiteralMarkBecomesABlank_data();
    void aLiteralMarkBecomesABlank();
    void whiteSpaceIsWrittenAsAWriterDoes();
    void charactersThatXmlCannotHoldAreLeftOut();
    void aTextOfSuchCharactersAloneIsNone();
    void namesThatXmlCannotHoldAreMended();
    void aNodeIsShownByItsType_data();
    void aNodeIsShownByItsType();
    void theRootIsAlwaysShown();
    void childrenHideTheText();
    void anEmptyAttributeIsWritten();
    void theCrcIsThatOfTheBytes();
    void longContentsAreWhole();
    void theCanonicalFormIsThatOfAWriter();
    void theReadableFormIsIndentedAndEndsWithTheCrc();
    void theReadableFormKeepsBlanks();
    void theReadableFormTellsTheLocalTime();
    void onlyTheTimeOfTheReadableFormChanges();
    void bothShowsEveryNode();
    void deepTreesAreWritten();
    void theReadableFormOfADeepTreeStaysWithinBounds();
};

void CrcContentTest::aCrcPrintsAsEightUpperCaseDigits_data()
{
    QTest::addColumn<unsigned int>("crc");
    QTest::addColumn<QString>("text");

    QTest::newRow("zero") << 0U << "00000000";
    QTest::newRow("small") << 0xABU << "000000AB";
    QTest::newRow("large") << 0xDEADBEEFU << "DEADBEEF";
}

void CrcContentTest::aCrcPrintsAsEightUpperCaseDigits()
{
    QFETCH(unsigned int, crc);
    QFETCH(QString, text);

    QCOMPARE(PrintedCrc(crc), text);
}

void CrcContentTest::theCanonicalFormIsExact()
{
    QCOMPARE(Tree().With("name", "P1").Canonical(),
             QString(R"(<?xmlversion="1.0"encoding="UTF-8"?><IEDname="P1"/>)"));
}

void CrcContentTest::onlyValuesKeepTheirBlanks()
{
    Tree tree;
    tree.With("name", "two words").With("desc", "left out", g_readable);
    tree.Add("Val", " a  b ");

    QCOMPARE(tree.Canonical(), WithDeclaration(R"(<IEDname="two words"><Val> a  b </Val></IED>)"));
}

void CrcContentTest::aLiteralMarkBecomesABlank_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("written");

    QTest::newRow("alone") << "@wspace@"
                           << " ";
    QTest::newRow("inside") << "a@wspace@b"
                            << "a b";
    QTest::newRow("twice") << "@wspace@@wspace@"
                           << "  ";
    QTest::newRow("sharing an end") << "@wspace@wspace@"
                                    << " wspace@";
    QTest::newRow("cut short") << "@wspace"
                               << "@wspace";
    QTest::newRow("completed by a blank") << "@wspace b"
                                          << " wspace@b";
    QTest::newRow("other signs") << "a@b c"
                                 << "a@b c";
}

void CrcContentTest::aLiteralMarkBecomesABlank()
{
    QFETCH(QString, value);
    QFETCH(QString, written);
    Tree tree("IED", value);
    tree.With("name", value);

    QCOMPARE(tree.Canonical(),
             WithDeclaration("<IEDname=\"" + written + "\">" + written + "</IED>"));
    QCOMPARE(tree.Canonical(), QString::fromUtf8(CanonicalByWriter(tree.Root())));
}

void CrcContentTest::whiteSpaceIsWrittenAsAWriterDoes()
{
    Tree tree("IED", "a\tb\nc");
    tree.With("name", "a\tb\nc\rd");

    QCOMPARE(tree.Canonical(), WithDeclaration("<IEDname=\"a&#9;b&#10;c&#13;d\">a\tb\nc</IED>"));
}

void CrcContentTest::charactersThatXmlCannotHoldAreLeftOut()
{
    const QString text = QString("a") + QChar(0x01) + "b" + QChar(0xD800) + "c" + QChar(0xFFFF);
    Tree tree("IED", text);
    tree.With("name", text).With("behind", "them");

    QCOMPARE(tree.Canonical(), WithDeclaration(R"(<IEDname="abc"behind="them">abc</IED>)"));
    QVERIFY(tree.Readable().contains(R"(<IED name="abc" behind="them">abc)"));
}

void CrcContentTest::aTextOfSuchCharactersAloneIsNone()
{
    const Tree tree("IED", QString(QChar(0x01)));

    QCOMPARE(tree.Canonical(), WithDeclaration("<IED/>"));
}

void CrcContentTest::namesThatXmlCannotHoldAreMended()
{
    Tree tree;
    tree.With("a b", "1");
    tree.Add("1<")->AddAttribute(g_both, QString(), "2");

    QCOMPARE(tree.Canonical(), WithDeclaration(R"(<IEDa_b="1"><_1__="2"/></IED>)"));
}

void CrcContentTest::aNodeIsShownByItsType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("canonical");
    QTest::addColumn<bool>("readable");

    QTest::newRow("canonical") << int(g_canonical) << true << false;
    QTest::newRow("readable") << int(g_readable) << false << true;
    QTest::newRow("both") << int(g_both) << true << true;
}

void CrcContentTest::aNodeIsShownByItsType()
{
    QFETCH(int, type);
    QFETCH(bool, canonical);
    QFETCH(bool, readable);
    const auto nodeType = static_cast<CrcGenerator::GeneratorType>(type);
    Tree tree;
    tree.With("mark", "x", nodeType);
    tree.Add("Child", QString(), nodeType);

    QCOMPARE(tree.Canonical().contains("mark"), canonical);
    QCOMPARE(tree.Canonical().contains("Child"), canonical);
    QCOMPARE(tree.Readable().contains("mark"), readable);
    QCOMPARE(tree.Readable().contains("Child"), readable);
}

void CrcContentTest::theRootIsAlwaysShown()
{
    const CrcElement root(g_readable, "IED", QString());
    QByteArray content;

    CanonicalCrc(&root, &content);

    QCOMPARE(QString::fromUtf8(content), WithDeclaration("<IED/>"));
}

void CrcContentTest::childrenHideTheText()
{
    Tree shown("IED", "text");
    shown.Add("Child");
    Tree hidden("IED", "text");
    hidden.Add("Child", QString(), g_readable);

    QCOMPARE(shown.Canonical(), WithDeclaration("<IED><Child/></IED>"));
    QCOMPARE(hidden.Canonical(), WithDeclaration("<IED/>"));
}

void CrcContentTest::anEmptyAttributeIsWritten()
{
    QCOMPARE(Tree().With("name", QString()).Canonical(), WithDeclaration(R"(<IEDname=""/>)"));
}

void CrcContentTest::theCrcIsThatOfTheBytes()
{
    Tree tree;
    tree.With("name", "P1");
    QByteArray content = "what was there before";

    const unsigned int crc = CanonicalCrc(tree.Root(), &content);

    QCOMPARE(crc, Internal::UpdateCrc32(0, content.constData(), static_cast<int>(content.size())));
    QCOMPARE(CanonicalCrc(tree.Root(), nullptr), crc);
}

void CrcContentTest::longContentsAreWhole()
{
    for (const int size : {16383, 16384, 16385, 100000}) {
        const QString text = QString(size, 'x');
        const QString wide = QString(size, QChar(0x7EBF));
        Tree tree("IED", text);
        tree.With("name", wide);

        QCOMPARE(tree.Canonical(), WithDeclaration("<IEDname=\"" + wide + "\">" + text + "</IED>"));
        QByteArray content;
        QCOMPARE(CanonicalCrc(tree.Root(), nullptr), CanonicalCrc(tree.Root(), &content));
    }
}

void CrcContentTest::theCanonicalFormIsThatOfAWriter()
{
    for (unsigned int seed = 0; seed < 3000; ++seed) {
        RandomTrees random(seed);
        CrcElement root(g_both, "IED", random.Text());
        random.Fill(&root, 4);
        QByteArray content;

        const unsigned int crc = CanonicalCrc(&root, &content);

        QCOMPARE(QString::fromUtf8(content), QString::fromUtf8(CanonicalByWriter(&root)));
        QCOMPARE(crc,
                 Internal::UpdateCrc32(0, content.constData(), static_cast<int>(content.size())));
    }
}

void CrcContentTest::theReadableFormIsIndentedAndEndsWithTheCrc()
{
    Tree tree;
    tree.With("name", "P1").With("desc", "two words", g_readable);
    tree.Add("GOOSEPUB")->children.append(new CrcElement(g_both, "Val", "on"));

    QCOMPARE(tree.Readable(), QString(R"(<?xml version="1.0" encoding="UTF-8"?>
<IED name="P1" desc="two words">
  <GOOSEPUB>
    <Val>on</Val>
  </GOOSEPUB>
  <CRC id="00000ABC" timestamp="*"/>
</IED>
)"));
}

void CrcContentTest::theReadableFormKeepsBlanks()
{
    Tree tree;
    tree.With("name", " a  b@wspace@ ");

    QVERIFY(tree.Readable().contains(R"(<IED name=" a  b@wspace@ ">)"));
}

void CrcContentTest::theReadableFormTellsTheLocalTime()
{
    const Tree tree;
    const QString format = "yyyy-MM-dd hh:mm:ss";
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);

    const CrcElement root(g_both, "IED", QString());
    const QByteArray content = ReadableContent(&root, g_readable, 0);

    QXmlStreamReader reader(content);
    reader.readNextStartElement();
    reader.readNextStartElement();
    const QDateTime time =
        QDateTime::fromString(reader.attributes().value("timestamp").toString(), format);
    QVERIFY(time >= before && time <= QDateTime::currentDateTime());
}

void CrcContentTest::onlyTheTimeOfTheReadableFormChanges()
{
    Tree tree;
    tree.With("name", "P1");
    tree.Add("Val", "x");

    QCOMPARE(tree.Readable(), tree.Readable());
    QCOMPARE(tree.Canonical(), tree.Canonical());
}

void CrcContentTest::bothShowsEveryNode()
{
    Tree tree;
    tree.With("a", "1", g_canonical).With("b", "2", g_readable).With("c", "3", g_both);

    QVERIFY(tree.Readable(g_both).contains(R"(<IED a="1" b="2" c="3">)"));
}

void CrcContentTest::deepTreesAreWritten()
{
    constexpr int depth = 100000;
    Tree tree;
    CrcElement* last = tree.Root();
    for (int i = 0; i < depth; ++i) {
        last->children.append(new CrcElement(g_both, "E", QString()));
        last = last->children.first();
    }
    last->text = "bottom";

    const QString canonical = tree.Canonical();

    QCOMPARE(canonical, WithDeclaration("<IED>" + QString("<E>").repeated(depth) + "bottom" +
                                        QString("</E>").repeated(depth) + "</IED>"));
}

void CrcContentTest::theReadableFormOfADeepTreeStaysWithinBounds()
{
    constexpr int depth = 100000;
    Tree tree;
    CrcElement* last = tree.Root();
    for (int i = 0; i < depth; ++i) {
        last->children.append(new CrcElement(g_both, "E", QString()));
        last = last->children.first();
    }

    const QString readable = tree.Readable();

    QVERIFY(
        readable.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<IED>\n  <E>\n    <E>"));
    QVERIFY(readable.endsWith("\n  </E>\n  <CRC id=\"00000ABC\" timestamp=\"*\"/>\n</IED>\n"));
    QCOMPARE(readable.count("<E"), decltype(readable.size())(depth));
    QVERIFY(readable.size() < 1000000);
}

QTEST_APPLESS_MAIN(CrcContentTest)
#include "CrcContentTest.moc"
