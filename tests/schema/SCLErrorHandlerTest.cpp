// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLErrorHandler.h>

#include <corvane/schema/XercesText.h>

#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <QTest>

#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>

using namespace Corvane::Internal;
using namespace Corvane::Test;

class SCLErrorHandlerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_control = std::make_unique<TestControl>(); }
    void cleanup() { m_control.reset(); }

    void aReportGivesLineColumnAndText();
    void theTextIsKeptInFull_data();
    void theTextIsKeptInFull();
    void reportsAreGatheredInOrderAndForwarded();
    void warningsAreNoError();
    void errorsAndFatalErrorsAreErrors();
    void withoutForwardingTheListIsFilledAllTheSame();
    void withoutAControlItOnlyGathers();
    void resetForgetsAll();

private:
    std::unique_ptr<TestControl> m_control;
};

namespace
{

xercesc::SAXParseException Report(XMLFileLoc line, XMLFileLoc column, const QString& text)
{
    const XMLCh none = 0;
    return {ToXerces(text).data(), &none, &none, line, column};
}

} // namespace

void SCLErrorHandlerTest::aReportGivesLineColumnAndText()
{
    SCLErrorHandler handler(true);

    handler.error(Report(12, 7, QStringLiteral("Bad")));

    QCOMPARE(handler.GetMessages(), QStringList("Ln 12, Col 7: Bad"));
}

void SCLErrorHandlerTest::theTextIsKeptInFull_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("place markers") << "%1 %2 %3 %L1 100%";
    QTest::newRow("Chinese") << QString::fromUtf8("\xE5\x80\xBC '\xE5\x8F\x98' \xF0\x9D\x84\x9E");
    QTest::newRow("long") << QString(100000, QLatin1Char('x'));
    QTest::newRow("empty") << "";
}

void SCLErrorHandlerTest::theTextIsKeptInFull()
{
    QFETCH(QString, text);
    SCLErrorHandler handler(true);

    handler.warning(Report(1234567, 5000000000, text));

    QCOMPARE(handler.GetMessages(), QStringList("Ln 1234567, Col 5000000000: " + text));
}

void SCLErrorHandlerTest::reportsAreGatheredInOrderAndForwarded()
{
    const SignalLog log(m_control->Get());
    SCLErrorHandler handler(true);

    handler.error(Report(1, 2, QStringLiteral("a")));
    handler.warning(Report(3, 4, QStringLiteral("b")));
    handler.fatalError(Report(5, 6, QStringLiteral("c")));

    QCOMPARE(handler.GetMessages(),
             QStringList({"Ln 1, Col 2: a", "Ln 3, Col 4: b", "Ln 5, Col 6: c"}));
    QCOMPARE(log.Lines(), QStringList({"outMessage ERROR \"Ln 1, Col 2: a\"",
                                       "outMessage WARN \"Ln 3, Col 4: b\"",
                                       "outMessage FATAL \"Ln 5, Col 6: c\""}));
    QVERIFY(handler.HasError());
}

void SCLErrorHandlerTest::warningsAreNoError()
{
    SCLErrorHandler handler(true);
    QVERIFY(!handler.HasError());

    handler.warning(Report(1, 1, QStringLiteral("a")));

    QVERIFY(!handler.HasError());
}

void SCLErrorHandlerTest::errorsAndFatalErrorsAreErrors()
{
    SCLErrorHandler withError(true);
    SCLErrorHandler withFatalError(true);

    withError.error(Report(1, 1, QStringLiteral("a")));
    withFatalError.fatalError(Report(1, 1, QStringLiteral("a")));

    QVERIFY(withError.HasError());
    QVERIFY(withFatalError.HasError());
}

void SCLErrorHandlerTest::withoutForwardingTheListIsFilledAllTheSame()
{
    const SignalLog log(m_control->Get());
    SCLErrorHandler handler(false);

    handler.error(Report(1, 2, QStringLiteral("a")));

    QCOMPARE(handler.GetMessages(), QStringList("Ln 1, Col 2: a"));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLErrorHandlerTest::withoutAControlItOnlyGathers()
{
    m_control.reset();
    xercesc::XMLPlatformUtils::Initialize();
    {
        SCLErrorHandler handler(true);
        handler.error(Report(1, 2, QStringLiteral("a")));

        QCOMPARE(handler.GetMessages(), QStringList("Ln 1, Col 2: a"));
    }
    xercesc::XMLPlatformUtils::Terminate();
}

void SCLErrorHandlerTest::resetForgetsAll()
{
    SCLErrorHandler handler(true);
    handler.error(Report(1, 2, QStringLiteral("a")));

    handler.resetErrors();

    QCOMPARE(handler.GetMessages(), QStringList());
    QVERIFY(!handler.HasError());
}

QTEST_GUILESS_MAIN(SCLErrorHandlerTest)
#include "SCLErrorHandlerTest.moc"
