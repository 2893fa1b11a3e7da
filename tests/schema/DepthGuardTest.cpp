// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/DepthGuard.h>

#include <corvane/schema/SCLErrorHandler.h>

#include "tests/support/TestControl.h"

#include <QTest>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>

using namespace Corvane::Internal;
using namespace Corvane::Test;

class DepthGuardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void elementsUpToTheLimitPass();
    void oneMoreIsAFatalErrorAtItsPlaceAndEndsTheParse();
    void elementsSideBySideDoNotCount();

private:
    bool IsStopped(const QByteArray& xml, SCLErrorHandler& errors);

    TestControl m_control;
};

bool DepthGuardTest::IsStopped(const QByteArray& xml, SCLErrorHandler& errors)
{
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xml.constData()),
                                            static_cast<XMLSize_t>(xml.size()), "xml");
    DepthGuard guard(errors);
    xercesc::SAX2XMLReaderImpl reader;
    reader.setContentHandler(&guard);
    reader.setErrorHandler(&errors);
    reader.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    try {
        reader.parse(source);
    } catch (const DepthGuard::Stop&) {
        return true;
    }
    return false;
}

void DepthGuardTest::elementsUpToTheLimitPass()
{
    SCLErrorHandler errors(false);

    QVERIFY(
        !IsStopped(QByteArray("<a>").repeated(20000) + QByteArray("</a>").repeated(20000), errors));
    QCOMPARE(errors.GetMessages(), QStringList());
}

void DepthGuardTest::oneMoreIsAFatalErrorAtItsPlaceAndEndsTheParse()
{
    SCLErrorHandler errors(false);

    QVERIFY(IsStopped(QByteArray("<a>").repeated(20000) + "\n<a></b>", errors));
    QCOMPARE(errors.GetMessages(),
             QStringList("Ln 2, Col 4: elements are nested deeper than 20000"));
    QVERIFY(errors.HasError());
}

void DepthGuardTest::elementsSideBySideDoNotCount()
{
    SCLErrorHandler errors(false);

    QVERIFY(!IsStopped("<a>" + QByteArray("<a/>").repeated(30000) + "</a>", errors));
}

QTEST_GUILESS_MAIN(DepthGuardTest)
#include "DepthGuardTest.moc"
