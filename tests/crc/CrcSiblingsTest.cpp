// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcContentIds.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcSiblings.h>

#include <QtTest>

using namespace Corvane;
using namespace Corvane::Internal;

namespace
{

// Makes children of a list as "tag:name=text tag:name ...", each name the attribute `name`.
void AddChildren(CrcElement& parent, const QString& list)
{
    const QStringList items = list.split(' ', Qt::SkipEmptyParts);
    for (const QString& item : items) {
        auto* child =
            new CrcElement(CrcGenerator::GeneratorBoth, item.section('=', 0, 0).section(':', 0, 0),
                           item.section('=', 1));
        const QString name = item.section('=', 0, 0).section(':', 1);
        if (!name.isEmpty())
            child->AddAttribute(CrcGenerator::GeneratorBoth, "name", name);
        parent.children.append(child);
    }
}

QString TextOf(const CrcElement* element)
{
    if (element == nullptr)
        return QStringLiteral("-");
    const QString name = ValueOf(element, "name");
    return element->name + (name.isEmpty() ? name : ':' + name) +
           (element->text.isEmpty() ? element->text : '=' + element->text);
}

// The steps as "left|right", an order as "place: left|right".
QStringList StepsOf(const QString& left, const QString& right)
{
    CrcElement onLeft(CrcGenerator::GeneratorBoth, "parent", {});
    CrcElement onRight(CrcGenerator::GeneratorBoth, "parent", {});
    AddChildren(onLeft, left);
    AddChildren(onRight, right);
    CrcContentIds ids;
    ids.Add(&onLeft);
    ids.Add(&onRight);
    QStringList steps;
    for (const CrcSiblingStep& step : CompareSiblings(&onLeft, &onRight, ids)) {
        const QString place = step.kind == CrcSiblingStep::Kind::Order
                                  ? QString::number(step.place) + ": "
                                  : QString();
        steps.append(place + TextOf(step.left) + '|' + TextOf(step.right));
    }
    return steps;
}

} // namespace

class CrcSiblingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStepsTellWhatDiffers_data();
    void theStepsTellWhatDiffers();
    void elementsAreNamedByWhatNamesThemInScl();
};

void CrcSiblingsTest::theStepsTellWhatDiffers_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QStringList>("steps");

    QTest::newRow("none") << ""
                          << "" << QStringList();
    QTest::newRow("equal") << "a:1=x b c"
                           << "a:1=x b c" << QStringList();
    QTest::newRow("text") << "a:1=x a:2=x"
                          << "a:1=x a:2=y" << QStringList{"a:2=x|a:2=y"};
    QTest::newRow("other name") << "a:1"
                                << "a:2" << QStringList{"a:1|-", "-|a:2"};
    QTest::newRow("other tag") << "a:1"
                               << "b:1" << QStringList{"a:1|-", "-|b:1"};
    QTest::newRow("put in") << "a:1 a:3"
                            << "a:1 a:2 a:3" << QStringList{"-|a:2"};
    QTest::newRow("taken out in front") << "a=1 a=2 a=3"
                                        << "a=2 a=3" << QStringList{"a=1|-"};
    QTest::newRow("order") << "a:1 a:2 a:3"
                           << "a:1 a:3 a:2" << QStringList{"2: a:2|a:3"};
    QTest::newRow("order of what has no name") << "a=1 a=2"
                                               << "a=2 a=1" << QStringList{"1: a=1|a=2"};
    QTest::newRow("order and text") << "a:1=x a:2 a:3"
                                    << "a:1=y a:3 a:2" << QStringList{"a:1=x|a:1=y", "2: a:2|a:3"};
    QTest::newRow("order and one more") << "a:1 a:2"
                                        << "a:0 a:2 a:1" << QStringList{"-|a:0", "1: a:1|a:2"};
    QTest::newRow("by place") << "a=1 a=2 a=3"
                              << "a=1 a=x a=3 a=4" << QStringList{"a=2|a=x", "-|a=4"};
    QTest::newRow("duplicates between equal ones")
        << "a:1=x a:1=y a:1=z"
        << "a:1=y a:1=w" << QStringList{"a:1=x|-", "a:1=z|a:1=w"};
    QTest::newRow("duplicates in order")
        << "a:1=x a:1=y a:1=z"
        << "a:1=u a:1=v" << QStringList{"a:1=x|a:1=u", "a:1=y|a:1=v", "a:1=z|-"};
    QTest::newRow("inputs") << "intAddr:1 intAddr:2"
                            << "intAddr:3 intAddr:2 intAddr:4"
                            << QStringList{"intAddr:1|intAddr:3", "-|intAddr:4"};
    QTest::newRow("inputs between equal ones")
        << "intAddr:1 intAddr:2"
        << "intAddr:2 intAddr:3" << QStringList{"intAddr:1|-", "-|intAddr:3"};
}

void CrcSiblingsTest::theStepsTellWhatDiffers()
{
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    QFETCH(const QStringList, steps);

    QCOMPARE(StepsOf(left, right), steps);
}

void CrcSiblingsTest::elementsAreNamedByWhatNamesThemInScl()
{
    const auto namesOf = [](const QString& tag, const QStringList& attributes) {
        CrcElement element(CrcGenerator::GeneratorBoth, tag, {});
        for (const QString& attribute : attributes)
            element.AddAttribute(CrcGenerator::GeneratorReadable, attribute, '<' + attribute + '>');
        return NamesOf(&element).join(' ');
    };
    QCOMPARE(namesOf("FCDA", {"fc", "ldInst", "prefix", "lnClass", "lnInst", "doName", "daName"}),
             QString("<ldInst> <prefix> <lnClass> <lnInst> <doName> <daName>"));
    QCOMPARE(namesOf("GSE", {"name", "cbName", "ldInst"}), QString("<ldInst> <cbName>"));
    QCOMPARE(namesOf("SMV", {"cbName", "ldInst"}), QString("<ldInst> <cbName>"));
    QCOMPARE(namesOf("P", {"type"}), QString("<type>"));
    QCOMPARE(namesOf("DAI", {"type", "inst", "name"}), QString("<name>"));
    QCOMPARE(namesOf("x", {"type", "inst"}), QString("<inst>"));
    QCOMPARE(namesOf("Val", {"sGroup"}), QString());
    for (const char* tag : {"GSEControl", "SampledValueControl", "ConnectedAP", "DataSet"})
        QCOMPARE(namesOf(tag, {"name", "type"}), QString());
}

QTEST_GUILESS_MAIN(CrcSiblingsTest)
#include "CrcSiblingsTest.moc"
