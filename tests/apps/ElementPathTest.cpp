// SPDX-License-Identifier: Apache-2.0
#include "apps/command/ElementPath.h"

#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <QtTest>

using namespace Corvane::Test;
using Corvane::SCLElement;
using Corvane::Command::ElementPath;

namespace
{

const char* const station = R"(<SCL><SCL x="1"/><IED name="A"/>
  <IED name="B"><AccessPoint name="P"/><AccessPoint name="Q"><LN lnClass="MMXU" inst="1"/>
    <LN lnClass="MMXU" inst="2"/><LN lnClass="XCBR" inst="1"/></AccessPoint></IED>
  <IED name="a]b/c"/><IED name="&quot;\"/><IED name="C" desc="x&#10;&#228;"/></SCL>)";

} // namespace

class ElementPathTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPathLeadsToAnElement_data();
    void aPathLeadsToAnElement();
    void aWrongPathIsExplained_data();
    void aWrongPathIsExplained();
    void thePathOfAnElementLeadsBackToIt();
};

void ElementPathTest::aPathLeadsToAnElement_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("element");

    const auto row = [](const char* path, const char* element) {
        QTest::newRow(path) << QString::fromUtf8(path) << QString::fromUtf8(element);
    };
    row("IED", R"(<IED name="A"/>)");
    row("SCL/IED", R"(<IED name="A"/>)");
    row("IED[1]", R"(<IED name="A"/>)");
    row("SCL/SCL", R"(<SCL x="1"/>)");
    row("SCL[x=1]", R"(<SCL x="1"/>)");
    row("IED[2]/AccessPoint", R"(<AccessPoint name="P"/>)");
    row("IED[name=B]/AccessPoint[1]", R"(<AccessPoint name="P"/>)");
    row("IED[name=\"B\"]/AccessPoint[name=P]", R"(<AccessPoint name="P"/>)");
    row("IED[2]/AccessPoint[2]/LN[lnClass=XCBR]", R"(<LN lnClass="XCBR" inst="1"/>)");
    row("IED[2]/AccessPoint[2]/LN[lnClass=MMXU][inst=2]", R"(<LN lnClass="MMXU" inst="2"/>)");
    row("IED[2]/AccessPoint[2]/LN[lnClass=MMXU][2]", R"(<LN lnClass="MMXU" inst="2"/>)");
    row("IED[2]/AccessPoint[2]/LN[inst=1][2]", R"(<LN lnClass="XCBR" inst="1"/>)");
    row("IED[name=\"a]b/c\"]", R"(<IED name="a]b/c"/>)");
    row("IED[name=\"\\\"\\\\\"]", R"(<IED name="&quot;\"/>)");
    row("IED[desc=\"x\\n\\u00e4\"]", "<IED name=\"C\" desc=\"x\n\u00e4\"/>");
    row("IED[desc=]", R"(<IED name="A"/>)");
    row("IED[desc=\"\"]", R"(<IED name="A"/>)");
    row("IED[9]", "null");
    row("IED[2147483647]", "null");
    row("IED[name=b]", "null");
    row("ied", "null");
    row("IED/AccessPoint/LN", "null");
    row("IED[2]/AccessPoint[2]/LN[lnClass=MMXU][inst=3]", "null");
}

void ElementPathTest::aPathLeadsToAnElement()
{
    QFETCH(const QString, path);
    QFETCH(const QString, element);
    TestControl control;
    SCLElement* root = control.OpenRoot(station);
    ElementPath read;

    QCOMPARE(read.Read(path), QString());
    QCOMPARE(ElementText(read.Find(root)), element);
}

void ElementPathTest::aWrongPathIsExplained_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");

    const auto row = [](const char* path, const char* reason) {
        QTest::newRow(*path == 0 ? "empty" : path) << QString(path) << QString(reason);
    };
    row("", "a tag is missing at character 1");
    row("/", "a tag is missing at character 1");
    row("/IED", "a tag is missing at character 1");
    row("IED/", "a tag is missing at character 5");
    row("IED//LN", "a tag is missing at character 5");
    row("[1]", "a tag is missing at character 1");
    row("IED]", "'/' or '[' is missing at character 4");
    row("IED[1]x", "'/' or '[' is missing at character 7");
    row("IED=x", "'/' or '[' is missing at character 4");
    row("IED[", "an attribute or a position is missing at character 5");
    row("IED[]", "an attribute or a position is missing at character 5");
    row("IED[=x]", "an attribute or a position is missing at character 5");
    row("IED[0]", "a position is out of range at character 6");
    row("IED[2147483648]", "a position is out of range at character 15");
    row("IED[1", "']' is missing at character 6");
    row("IED[1x]", "']' is missing at character 6");
    row("IED[-1]", "'=' is missing at character 7");
    row("IED[name]", "'=' is missing at character 9");
    row("IED[name=x", "']' is missing at character 11");
    row("IED[name=x\"y]", "']' is missing at character 11");
    row("IED[name=\"x]", "a closing '\"' is missing at character 13");
    row("IED[name=\"x\\", "a '\\' stands before nothing that can be escaped at character 13");
    row("IED[name=\"\\x\"]", "a '\\' stands before nothing that can be escaped at character 13");
    row("IED[name=\"\\u12\"]", "'\\u' needs four hexadecimal digits at character 13");
    row("IED[1][name=x]", "a position must stand last at character 8");
    row("IED[1][2]", "a position must stand last at character 8");
}

void ElementPathTest::aWrongPathIsExplained()
{
    QFETCH(const QString, path);
    QFETCH(const QString, reason);
    QCOMPARE(ElementPath().Read(path), reason);
}

void ElementPathTest::thePathOfAnElementLeadsBackToIt()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(station);
    SCLElement* element = At(root, QStringLiteral("IED[1]/AccessPoint[1]/LN[2]"));

    const QString path = ElementPath::Of(element);

    QCOMPARE(path, QStringLiteral("SCL/IED[2]/AccessPoint[2]/LN[3]"));
    ElementPath read;
    QCOMPARE(read.Read(path), QString());
    QCOMPARE(read.Find(root), element);
    QCOMPARE(ElementPath::Of(root), QStringLiteral("SCL"));
}

QTEST_GUILESS_MAIN(ElementPathTest)
#include "ElementPathTest.moc"
