// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLGrammarPool.h>

#include <corvane/schema/SCLElementType.h>

#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <QDir>
#include <QTcpServer>
#include <QTest>

#include <memory>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Corvane;
using namespace Corvane::Internal;
using namespace Corvane::Test;

class SCLGrammarPoolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_control = std::make_unique<TestControl>(); }
    void cleanup() { m_control.reset(); }

    void thereIsNoPoolBeforeAnExistingFileIsRegistered();
    void aLoadedSchemaGivesItsGlobalElements();
    void hasSclSchemaNeedsSclInTheSclNamespace_data();
    void hasSclSchemaNeedsSclInTheSclNamespace();
    void aFailedLoadCanBeFollowedByAGoodOne();
    void aSecondSchemaAddsItsTypesBehindTheFirst();
    void validationFollowsTheSecondSchema();
    void aFailedSecondLoadEndsValidationButNotTypes();
    void anyFileNameWorks_data();
    void anyFileNameWorks();
    void includedAndImportedFilesAreRead_data();
    void includedAndImportedFilesAreRead();
    void schemasThatLeadToThemselvesLoad_data();
    void schemasThatLeadToThemselvesLoad();
    void loadingASchemaOpensNoConnection();
    void aControlAfterAControlStartsAnew();

    void aValidFileGivesTrueAndClearsTheMessages();
    void errorsAreReportedAndSignalled();
    void theReportsOfAFileEndWithItsFatalError();
    void messagesAreThoseOfTheLastFileOnly();
    void textsOfMessagesAreComplete();
    void withoutASchemaNothingIsValidated();
    void withoutAFileNothingIsValidated_data();
    void withoutAFileNothingIsValidated();
    void aFileThatCannotBeOpenedIsAFatalError();
    void filesOfUnknownNamespacesPassASchemaWithoutScl();

    void aFileOpensNoConnection_data();
    void aFileOpensNoConnection();
    void aFileOpensNoOtherFile_data();
    void aFileOpensNoOtherFile();
    void schemaLocationsDoNotChangeTheVerdict();
    void anSclSchemaBesideTheFileIsNotTaken();
    void theVerdictDoesNotDependOnEarlierFiles_data();
    void theVerdictDoesNotDependOnEarlierFiles();

    void filesThatBlowUpEndSoon_data();
    void filesThatBlowUpEndSoon();
    void manyPredefinedEntitiesAreNoBlowUp();

private:
    bool Register(const QByteArray& schema, const QString& name = QStringLiteral("s.xsd"));
    bool Validate(const QByteArray& file);

    std::unique_ptr<TestControl> m_control;
    QStringList m_messages;
};

namespace
{

SCLElementType* RootType(const char* name)
{
    return SCLGrammarPool::Instance()->FindRootType(QLatin1String(name));
}

QByteArray Foreign(const QByteArray& xml)
{
    return SclFile("<Private>" + xml + "</Private><Header id='h'/>");
}

QByteArray WithDocumentType(const QByteArray& type)
{
    return "<!DOCTYPE SCL " + type + ">" + ValidSclFile();
}

/// Counts the connections that somebody opens to it.
class Server : public QTcpServer
{
public:
    Server() { listen(QHostAddress::LocalHost); }

    QByteArray Url(const QByteArray& file) const
    {
        return "http://127.0.0.1:" + QByteArray::number(serverPort()) + '/' + file;
    }
    int Connections()
    {
        while (waitForNewConnection(200)) {
            nextPendingConnection()->deleteLater();
            ++m_connections;
        }
        return m_connections;
    }

private:
    int m_connections = 0;
};

} // namespace

bool SCLGrammarPoolTest::Register(const QByteArray& schema, const QString& name)
{
    return (*m_control)->RegisterSchema(m_control->Folder().Write(name, schema));
}

bool SCLGrammarPoolTest::Validate(const QByteArray& file)
{
    const QString path = m_control->Folder().Write(QStringLiteral("file.scd"), file);
    return (*m_control)->SchemaValidate(path, m_messages);
}

void SCLGrammarPoolTest::thereIsNoPoolBeforeAnExistingFileIsRegistered()
{
    QVERIFY(!(*m_control)->RegisterSchema(QString()));
    QVERIFY(!(*m_control)->RegisterSchema(m_control->Folder().Path(QStringLiteral("missing"))));
    QCOMPARE(SCLGrammarPool::Instance(), nullptr);
    QVERIFY(!(*m_control)->HasSclSchema());

    QVERIFY(Register(SmallSclSchema()));
    QVERIFY(SCLGrammarPool::Instance());
}

void SCLGrammarPoolTest::aLoadedSchemaGivesItsGlobalElements()
{
    QVERIFY(Register(SclSchema("<xs:element name='SCL'/><xs:element name='Other'/>"
                               "<xs:complexType name='T'/>")));

    QCOMPARE(RootType("SCL")->GetName(), QStringLiteral("SCL"));
    QCOMPARE(RootType("Other")->m_nMinOccurs, 1U);
    QCOMPARE(RootType("T"), nullptr);
    QCOMPARE(RootType("scl"), nullptr);
    QCOMPARE(RootType(""), nullptr);
}

void SCLGrammarPoolTest::hasSclSchemaNeedsSclInTheSclNamespace_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<bool>("hasScl");
    QTest::newRow("SCL") << SmallSclSchema() << true;
    QTest::newRow("other element") << SclSchema("<xs:element name='scl'/>") << false;
    QTest::newRow("type only") << SclSchema("<xs:complexType name='SCL'/>") << false;
    QTest::newRow("other namespace") << SchemaOf("urn:x", "<xs:element name='SCL'/>") << false;
    QTest::newRow("empty file") << QByteArray() << false;
    QTest::newRow("garbage") << QByteArray("garbage") << false;
    QTest::newRow("bytes") << QByteArray::fromHex("00ff80fe00") << false;
    QTest::newRow("no schema") << ValidSclFile() << false;
    QTest::newRow("cut off") << SmallSclSchema().left(300) << false;
}

void SCLGrammarPoolTest::hasSclSchemaNeedsSclInTheSclNamespace()
{
    QFETCH(QByteArray, schema);
    QFETCH(bool, hasScl);

    QVERIFY(Register(schema));
    QCOMPARE((*m_control)->HasSclSchema(), hasScl);
}

void SCLGrammarPoolTest::aFailedLoadCanBeFollowedByAGoodOne()
{
    QVERIFY(!Register(QByteArray("<a>").repeated(100000)));
    QVERIFY(SCLGrammarPool::Instance());
    QCOMPARE(RootType("SCL"), nullptr);
    QVERIFY(!(*m_control)->HasSclSchema());

    QVERIFY(Register(SmallSclSchema()));
    QVERIFY(RootType("SCL"));
}

void SCLGrammarPoolTest::aSecondSchemaAddsItsTypesBehindTheFirst()
{
    QVERIFY(Register(SmallSclSchema()));
    SCLElementType* scl = RootType("SCL");

    QVERIFY(Register(SclSchema("<xs:element name='SCL'/><xs:element name='New'/>"), "t.xsd"));

    QCOMPARE(RootType("SCL"), scl);
    QVERIFY(RootType("New"));
    // Children are loaded now, from the schema that was replaced.
    QVERIFY(scl->FindChildType(QStringLiteral("IED"))->FindChildType(QStringLiteral("LDevice")));
}

void SCLGrammarPoolTest::validationFollowsTheSecondSchema()
{
    QVERIFY(Register(SmallSclSchema()));
    QVERIFY(!Validate(SclFile("")));

    QVERIFY(Register(SclSchema("<xs:element name='SCL'/>"), "t.xsd"));

    QVERIFY(Validate(SclFile("")));
}

void SCLGrammarPoolTest::aFailedSecondLoadEndsValidationButNotTypes()
{
    QVERIFY(Register(SmallSclSchema()));
    SCLElementType* scl = RootType("SCL");

    QVERIFY(!Register(QByteArray("<a>").repeated(1000), "t.xsd"));

    QCOMPARE(RootType("SCL"), scl);
    QVERIFY(scl->FindChildType(QStringLiteral("IED"))->FindChildType(QStringLiteral("LDevice")));
    QVERIFY(!(*m_control)->HasSclSchema());
    m_messages = QStringList("old");
    QVERIFY(!Validate(ValidSclFile()));
    QCOMPARE(m_messages, QStringList("old"));
}

void SCLGrammarPoolTest::anyFileNameWorks_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "a";
    QTest::newRow("blanks") << " a  b ";
    QTest::newRow("per cent") << "a%20b%";
    QTest::newRow("number sign") << "a#b";
    QTest::newRow("question mark") << "a?b";
    QTest::newRow("plus and ampersand") << "a+b&c;";
    QTest::newRow("Latin-1") << QString::fromUtf8("Schutzger\xC3\xA4t");
    QTest::newRow("Chinese") << QString::fromUtf8("\xE5\x8F\x98\xE7\x94\xB5\xE7\xAB\x99");
    QTest::newRow("beyond the BMP") << QString::fromUtf8("\xF0\x9D\x84\x9E");
    QTest::newRow("like an address") << "http:a";
    QTest::newRow("like an option") << "-a";
}

void SCLGrammarPoolTest::anyFileNameWorks()
{
    QFETCH(QString, name);
    const QString folder = m_control->Folder().Path(name + QStringLiteral(".d"));
    QVERIFY(QDir().mkpath(folder));
    const QString schema = QDir(folder).filePath(name + QStringLiteral(".xsd"));
    const QString file = QDir(folder).filePath(name + QStringLiteral(".scd"));
    WriteFile(schema, SmallSclSchema());
    WriteFile(file, SclFile(""));

    QVERIFY((*m_control)->RegisterSchema(schema));
    QVERIFY((*m_control)->HasSclSchema());
    QVERIFY(!(*m_control)->SchemaValidate(file, m_messages));
    QCOMPARE(m_messages.size(), 1);
    QVERIFY2(m_messages.first().contains(QStringLiteral("Header")), qPrintable(m_messages.first()));
    WriteFile(file, ValidSclFile());
    QVERIFY((*m_control)->SchemaValidate(file, m_messages));
}

void SCLGrammarPoolTest::includedAndImportedFilesAreRead_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("location");
    QTest::newRow("beside") << "part.xsd" << QByteArray("part.xsd");
    QTest::newRow("in a folder") << "sub/part.xsd" << QByteArray("sub/part.xsd");
    QTest::newRow("escaped") << "a part.xsd" << QByteArray("a%20part.xsd");
    QTest::newRow("not escaped") << "a part.xsd" << QByteArray("a part.xsd");
    QTest::newRow("Chinese") << QString::fromUtf8("\xE5\x8F\x98.xsd")
                             << QByteArray("\xE5\x8F\x98.xsd");
}

void SCLGrammarPoolTest::includedAndImportedFilesAreRead()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, location);
    QDir(m_control->Folder().Path()).mkdir(QStringLiteral("sub"));
    const QByteArray type = "<xs:simpleType name='T'><xs:restriction base='xs:string'>"
                            "<xs:pattern value='x'/></xs:restriction></xs:simpleType>";
    m_control->Folder().Write(fileName, SclSchema(type));
    m_control->Folder().Write(QStringLiteral("other.xsd"),
                              SchemaOf("urn:other", "<xs:element name='O' type='xs:int'/>"));

    QVERIFY(Register(SclSchema("<xs:include schemaLocation='" + location +
                               "'/><xs:import namespace='urn:other' schemaLocation='other.xsd'/>" +
                               GlobalElement("SCL", "<xs:sequence xmlns:o='urn:other'>"
                                                    "<xs:element name='A' type='t:T'/>"
                                                    "<xs:element ref='o:O'/></xs:sequence>"))));

    QVERIFY(Validate(SclFile("<A>x</A><O xmlns='urn:other'>1</O>")));
    QVERIFY(!Validate(SclFile("<A>y</A><O xmlns='urn:other'>1</O>")));
    QVERIFY(!Validate(SclFile("<A>x</A><O xmlns='urn:other'>z</O>")));
    QVERIFY(RootType("O"));
}

void SCLGrammarPoolTest::schemasThatLeadToThemselvesLoad_data()
{
    QTest::addColumn<QByteArray>("schema");
    const QByteArray scl = "<xs:element name='SCL'/>";
    QTest::newRow("include of itself") << SclSchema("<xs:include schemaLocation='s.xsd'/>" + scl);
    QTest::newRow("include in a circle")
        << SclSchema("<xs:include schemaLocation='back.xsd'/>" + scl);
    QTest::newRow("import in a circle")
        << SclSchema("<xs:import namespace='urn:back' schemaLocation='backimport.xsd'/>" + scl);
    QTest::newRow("missing include")
        << SclSchema("<xs:include schemaLocation='missing.xsd'/>" + scl);
    QTest::newRow("group in itself")
        << SclSchema("<xs:group name='g'><xs:sequence><xs:group ref='t:g'/></xs:sequence>"
                     "</xs:group><xs:element name='SCL'/>");
    QTest::newRow("type derived from itself")
        << SclSchema("<xs:complexType name='T'><xs:complexContent><xs:extension base='t:T'/>"
                     "</xs:complexContent></xs:complexType><xs:element name='SCL'/>");
}

void SCLGrammarPoolTest::schemasThatLeadToThemselvesLoad()
{
    QFETCH(QByteArray, schema);
    m_control->Folder().Write(QStringLiteral("back.xsd"),
                              SclSchema("<xs:include schemaLocation='s.xsd'/>"));
    m_control->Folder().Write(QStringLiteral("backimport.xsd"),
                              SchemaOf("urn:back",
                                       "<xs:import namespace='http://www.iec.ch/61850/2003/SCL' "
                                       "schemaLocation='s.xsd'/>"));

    QVERIFY(Register(schema));
    QVERIFY((*m_control)->HasSclSchema());
    QVERIFY(RootType("SCL")->GetChildTypes().isEmpty());
}

void SCLGrammarPoolTest::loadingASchemaOpensNoConnection()
{
    Server server;
    QVERIFY(server.isListening());

    QVERIFY(!Register("<!DOCTYPE a SYSTEM '" + server.Url("a.dtd") + "'><a/>"));
    QVERIFY(Register(SclSchema("<xs:include schemaLocation='" + server.Url("b.xsd") +
                               "'/><xs:import namespace='urn:c' schemaLocation='" +
                               server.Url("c.xsd") + "'/><xs:element name='SCL'/>")));

    QVERIFY((*m_control)->HasSclSchema());
    QCOMPARE(server.Connections(), 0);
}

void SCLGrammarPoolTest::aControlAfterAControlStartsAnew()
{
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(SCLGrammarPool::Instance(), nullptr);
        QVERIFY(Register(SmallSclSchema()));
        QVERIFY(RootType("SCL")->FindChildType(QStringLiteral("IED")));
        QVERIFY(Validate(ValidSclFile()));
        QVERIFY(!Validate(SclFile("")));
        m_control.reset();
        m_control = std::make_unique<TestControl>();
    }
}

void SCLGrammarPoolTest::aValidFileGivesTrueAndClearsTheMessages()
{
    QVERIFY(Register(SmallSclSchema()));
    const SignalLog log(m_control->Get());
    m_messages = QStringList("old");

    QVERIFY(Validate(ValidSclFile()));

    QCOMPARE(m_messages, QStringList());
    QCOMPARE(log.Lines(), QStringList());
}

void SCLGrammarPoolTest::errorsAreReportedAndSignalled()
{
    QVERIFY(Register(SmallSclSchema()));
    const SignalLog log(m_control->Get());

    QVERIFY(!Validate(SclFile("<Header id='h'/>\n<IED/>\n<IED name='B'><Oops/></IED>")));

    QCOMPARE(m_messages.size(), 3);
    QCOMPARE(m_messages.at(0), QStringLiteral("Ln 2, Col 7: missing required attribute 'name'"));
    QVERIFY2(m_messages.at(1).startsWith(QStringLiteral("Ln 3, Col ")), qPrintable(m_messages[1]));
    QStringList signalled;
    for (const QString& message : std::as_const(m_messages))
        signalled.append(QStringLiteral("outMessage ERROR ") + Quoted(message));
    QCOMPARE(log.Lines(), signalled);
}

void SCLGrammarPoolTest::theReportsOfAFileEndWithItsFatalError()
{
    QVERIFY(Register(SmallSclSchema()));
    const SignalLog log(m_control->Get());

    QVERIFY(!Validate(SclFile("<Header/>\n</IED>\n<Oops/>")));

    QCOMPARE(m_messages.size(), 2);
    QCOMPARE(log.Lines(), QStringList({"outMessage ERROR " + Quoted(m_messages.at(0)),
                                       "outMessage FATAL " + Quoted(m_messages.at(1))}));
    QVERIFY2(m_messages.at(1).startsWith(QStringLiteral("Ln 2, Col ")), qPrintable(m_messages[1]));
}

void SCLGrammarPoolTest::messagesAreThoseOfTheLastFileOnly()
{
    QVERIFY(Register(SmallSclSchema()));
    QVERIFY(!Validate("<a>"));
    const QStringList first = m_messages;

    QVERIFY(!Validate(SclFile("")));
    QCOMPARE(m_messages.size(), 1);
    QVERIFY(m_messages != first);

    QVERIFY(!Validate("<a>"));
    QCOMPARE(m_messages, first);
}

void SCLGrammarPoolTest::textsOfMessagesAreComplete()
{
    QVERIFY(Register(SmallSclSchema()));
    const QByteArray name = QByteArray("\xE5\x8F\x98\xE7\x94\xB5").repeated(400);

    QVERIFY(!Validate(SclFile("<Header id='h' " + name + "='x'/>")));

    QCOMPARE(m_messages.size(), 1);
    QVERIFY(m_messages.first().contains(QLatin1Char('\'') + QString::fromUtf8(name) +
                                        QLatin1Char('\'')));
}

void SCLGrammarPoolTest::withoutASchemaNothingIsValidated()
{
    const SignalLog log(m_control->Get());
    m_messages = QStringList("old");

    QVERIFY(!Validate("<a>"));

    QCOMPARE(m_messages, QStringList("old"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLGrammarPoolTest::withoutAFileNothingIsValidated_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty name") << "";
    QTest::newRow("missing file") << "/missing/file.scd";
}

void SCLGrammarPoolTest::withoutAFileNothingIsValidated()
{
    QFETCH(QString, name);
    QVERIFY(Register(SmallSclSchema()));
    const SignalLog log(m_control->Get());
    m_messages = QStringList("old");

    QVERIFY(!(*m_control)->SchemaValidate(name, m_messages));

    QCOMPARE(m_messages, QStringList("old"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLGrammarPoolTest::aFileThatCannotBeOpenedIsAFatalError()
{
    QVERIFY(Register(SmallSclSchema()));
    const SignalLog log(m_control->Get());

    QVERIFY(!(*m_control)->SchemaValidate(m_control->Folder().Path(), m_messages));

    QCOMPARE(m_messages.size(), 1);
    QCOMPARE(log.Lines(), QStringList("outMessage FATAL " + Quoted(m_messages.first())));
}

void SCLGrammarPoolTest::filesOfUnknownNamespacesPassASchemaWithoutScl()
{
    QVERIFY(Register(SchemaOf("urn:x", "<xs:element name='a'/>")));

    QVERIFY(Validate("<b/>"));
    QVERIFY(Validate(SclFile("")));
    QVERIFY(!Validate("<b>"));
}

void SCLGrammarPoolTest::aFileOpensNoConnection_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("valid");
    const QByteArray xsi = " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";
    QTest::newRow("location of a foreign namespace")
        << Foreign("<x xmlns='urn:x'" + xsi + " xsi:schemaLocation='urn:x URL'/>") << true;
    QTest::newRow("location without namespace")
        << Foreign("<x xmlns='urn:x'" + xsi + " xsi:noNamespaceSchemaLocation='URL'/>") << true;
    QTest::newRow("location of the SCL namespace")
        << SclFile("<Header id='h'/>",
                   xsi + " xsi:schemaLocation='http://www.iec.ch/61850/2003/SCL URL'")
        << true;
    QTest::newRow("document type") << WithDocumentType("SYSTEM 'URL'") << true;
    QTest::newRow("public document type") << WithDocumentType("PUBLIC '-//a//b' 'URL'") << true;
    QTest::newRow("external parameter entity")
        << WithDocumentType("[<!ENTITY % e SYSTEM 'URL'>%e;]") << true;
    QTest::newRow("external entity")
        << "<!DOCTYPE SCL [<!ENTITY e SYSTEM 'URL'>]>" + Foreign("&e;") << false;
}

void SCLGrammarPoolTest::aFileOpensNoConnection()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, valid);
    Server server;
    QVERIFY(server.isListening());
    QVERIFY(Register(SmallSclSchema()));

    QCOMPARE(Validate(file.replace("URL", server.Url("x.xsd"))), valid);

    QCOMPARE(m_messages.isEmpty(), valid);
    QCOMPARE(server.Connections(), 0);
}

void SCLGrammarPoolTest::aFileOpensNoOtherFile_data()
{
    aFileOpensNoConnection_data();
}

/// The other file is a pipe that nobody writes to: whoever opens it waits for good.
void SCLGrammarPoolTest::aFileOpensNoOtherFile()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, valid);
    const QString pipe = m_control->Folder().Path(QStringLiteral("pipe"));
#ifdef Q_OS_UNIX
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
#endif
    QVERIFY(Register(SmallSclSchema()));

    QCOMPARE(Validate(QByteArray(file).replace("URL", "pipe")), valid);
    QCOMPARE(Validate(file.replace("URL", QUrl::fromLocalFile(pipe).toEncoded())), valid);
}

void SCLGrammarPoolTest::schemaLocationsDoNotChangeTheVerdict()
{
    QVERIFY(Register(SmallSclSchema()));
    m_control->Folder().Write(QStringLiteral("x.xsd"),
                              SchemaOf("urn:x", "<xs:element name='x' type='xs:int'/>"));

    QVERIFY(
        Validate(Foreign("<x xmlns='urn:x' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                         "xsi:schemaLocation='urn:x x.xsd'>no number</x>")));
    QVERIFY(Validate(Foreign("<x xmlns='urn:x'>no number</x>")));
}

void SCLGrammarPoolTest::anSclSchemaBesideTheFileIsNotTaken()
{
    m_control->Folder().Write(QStringLiteral("SCL.xsd"), SmallSclSchema());
    QVERIFY(Register(SchemaOf("urn:x", "<xs:element name='a'/>")));

    QVERIFY(Validate(SclFile("<Oops/>")));
}

void SCLGrammarPoolTest::theVerdictDoesNotDependOnEarlierFiles_data()
{
    QTest::addColumn<QByteArray>("earlier");
    QTest::newRow("document type with defaults")
        << "<!DOCTYPE SCL [<!ATTLIST Header id CDATA 'x'><!ENTITY e 'x'>]>" + SclFile("<Header/>");
    QTest::newRow("undeclared elements") << SclFile("<Oops/><x:y xmlns:x='urn:x'/><z xmlns=''/>");
    QTest::newRow("lax foreign elements") << Foreign("<y xmlns='urn:x'/><Oops xmlns=''/>");
    QTest::newRow("not well-formed") << SclFile("<Header><Oops");
    QTest::newRow("nested too deep") << QByteArray("<Oops>").repeated(30000);
    QTest::newRow("other root") << QByteArray("<Oops/>");
}

void SCLGrammarPoolTest::theVerdictDoesNotDependOnEarlierFiles()
{
    QFETCH(QByteArray, earlier);
    const QList<QByteArray> files = {
        ValidSclFile(),
        SclFile("<Header/>"),
        SclFile("<Header id='&e;'/>"),
        SclFile("<Oops/><x:y xmlns:x='urn:x'/><z xmlns=''/>"),
        Foreign("<y xmlns='urn:x'/><Oops xmlns=''/>"),
        "<Oops/>",
    };
    QList<QStringList> alone;
    for (const QByteArray& file : files) {
        QVERIFY(Register(SmallSclSchema()));
        Validate(file);
        alone.append(m_messages);
    }

    for (int i = 0; i < files.size(); ++i) {
        QVERIFY(Register(SmallSclSchema()));
        Validate(earlier);
        QCOMPARE(Validate(files.at(i)), alone.at(i).isEmpty());
        QCOMPARE(m_messages, alone.at(i));
    }
}

void SCLGrammarPoolTest::filesThatBlowUpEndSoon_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("lastMessage");

    QByteArray laughs = "<!ENTITY e0 'ha'>";
    QByteArray parameters = "<!ENTITY % p0 '<!ENTITY q \"q\">'>";
    for (int i = 1; i < 40; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray before = QByteArray::number(i - 1);
        laughs += "<!ENTITY e" + number + " '&e" + before + ";&e" + before + ";'>";
        parameters += "<!ENTITY % p" + number + " '&#37;p" + before + ";&#37;p" + before + ";'>";
    }
    QTest::newRow("entities of entities")
        << "<!DOCTYPE SCL [" + laughs + "]>" + Foreign("&e39;") << "entity 'e39' not found";
    QTest::newRow("entities of entities in an attribute")
        << "<!DOCTYPE SCL [" + laughs + "]>" + SclFile("<Header id='&e39;'/>")
        << "entity 'e39' not found";
    QTest::newRow("a long entity many times")
        << "<!DOCTYPE SCL [<!ENTITY e '" + QByteArray(1000000, 'x') + "'>]>" +
               Foreign(QByteArray("&e;").repeated(100000))
        << "entity 'e' not found";
    QTest::newRow("parameter entities") << WithDocumentType("[" + parameters + "%p39;]") << "";
    QTest::newRow("attribute defaults")
        << "<!DOCTYPE SCL [<!ATTLIST IED d CDATA '" + QByteArray(1000000, 'x') + "'>]>" +
               SclFile("<Header id='h'/>" + QByteArray("<IED name='A'/>").repeated(10000))
        << "";
    const QByteArray head = "<Header id='h'/><IED name='A'><LDevice><Private/><LN0>";
    QTest::newRow("nested 100,000 deep, valid otherwise")
        << SclFile(head + QByteArray("<SDI>").repeated(100000) +
                   QByteArray("</SDI>").repeated(100000) + "</LN0></LDevice></IED>")
        << "elements are nested deeper than 20000";
    QTest::newRow("nested 10,000 deep")
        << SclFile(head + QByteArray("<SDI>").repeated(10000) +
                   QByteArray("</SDI>").repeated(10000) + "</LN0></LDevice></IED>")
        << "";
    QTest::newRow("foreign elements nested 1,000,000 deep")
        << Foreign("<x xmlns='urn:x'>" + QByteArray("<y>").repeated(1000000))
        << "elements are nested deeper than 20000";
    QTest::newRow("nested 1,000,000 deep, not well-formed")
        << QByteArray("<a>").repeated(1000000) << "elements are nested deeper than 20000";
}

void SCLGrammarPoolTest::filesThatBlowUpEndSoon()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, lastMessage);
    QVERIFY(Register(SmallSclSchema()));

    QCOMPARE(Validate(file), lastMessage.isEmpty());

    const QString last = m_messages.isEmpty() ? QString() : m_messages.last();
    QCOMPARE(last.right(lastMessage.size()), lastMessage);
}

void SCLGrammarPoolTest::manyPredefinedEntitiesAreNoBlowUp()
{
    QVERIFY(Register(SmallSclSchema()));

    QVERIFY(
        Validate(SclFile("<Header id='" + QByteArray("&amp;&lt;&#65;").repeated(100000) + "'/>")));
}

QTEST_GUILESS_MAIN(SCLGrammarPoolTest)
#include "SCLGrammarPoolTest.moc"
