// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CommandAnswer.h"

#include <QFile>
#include <QRectF>
#include <QRegularExpression>
#include <QXmlStreamReader>

using namespace Corvane::Test;

namespace
{

QByteArray PhysConn(const QByteArray& port, const QByteArray& cable)
{
    return "<PhysConn>" + (port.isEmpty() ? "" : "<P type='Port'>" + port + "</P>") +
           (cable.isEmpty() ? "" : "<P type='Cable'>" + cable + "</P>") + "</PhysConn>";
}

QByteArray ConnectedAP(const QByteArray& ied, const QByteArray& physConns)
{
    return "<ConnectedAP iedName='" + ied + "' apName='S1'>" + physConns + "</ConnectedAP>";
}

QByteArray Station(const QByteArray& connectedAPs)
{
    QByteArray text =
        "<SCL><Communication><SubNetwork>" + connectedAPs + "</SubNetwork></Communication>";
    for (const char* name : {"A", "B", "C"})
        text += "<IED name='" + QByteArray(name) + "'><AccessPoint name='S1'/></IED>";
    return text + "</SCL>";
}

QByteArray Joined()
{
    return Station(ConnectedAP("A", PhysConn("p1", "c")) + ConnectedAP("B", PhysConn("p2", "c")));
}

struct Drawing {
    QStringList texts;
    QList<QRectF> boxes;
    QStringList paths;
    int circles = 0;
    bool isWellFormed = false;
};

Drawing ReadDrawing(const QString& file)
{
    Drawing drawing;
    QFile svg(file);
    if (!svg.open(QIODevice::ReadOnly))
        return drawing;
    QXmlStreamReader reader(&svg);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const auto number = [&attributes](const char* name) {
            return attributes.value(QLatin1String(name)).toString().toDouble();
        };
        const QString tag = reader.name().toString();
        if (tag == "rect" && attributes.hasAttribute("rx"))
            drawing.boxes += QRectF(number("x"), number("y"), number("width"), number("height"));
        else if (tag == "path")
            drawing.paths += attributes.value("d").toString();
        else if (tag == "circle")
            ++drawing.circles;
        else if (tag == "text")
            drawing.texts += reader.readElementText(QXmlStreamReader::SkipChildElements);
    }
    drawing.isWellFormed = !reader.hasError();
    return drawing;
}

// Where the vertical part of each line runs: its x, its upper and its lower end.
struct Lane {
    int x;
    int top;
    int bottom;
};

QList<Lane> LanesOf(const Drawing& drawing)
{
    static const QRegularExpression vertical("M(\\d+) (\\d+)V(\\d+)$");
    QList<Lane> lanes;
    for (const QString& path : drawing.paths) {
        const QRegularExpressionMatch match = vertical.match(path);
        lanes += {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()};
    }
    return lanes;
}

} // namespace

class CablesCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextShowsTheEndsOfEachCable()
    {
        const CommandResult result =
            RunOn(Station(ConnectedAP("A", PhysConn("p1", "c") + PhysConn("p2", "cable 2")) +
                          ConnectedAP("B", PhysConn("p2", "c") + PhysConn("p3&#9;", "cable 2"))),
                  {"cables"});

        QCOMPARE(result.output, QString("c        A S1 p1    B S1 p2\n"
                                        "cable 2  A S1 p2    B S1 p3\\t\n"
                                        "Cables: 2, with faults: 0\n"));
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, 0);
    }

    void whatIsRemarkableIsTold_data()
    {
        QTest::addColumn<QByteArray>("connectedAPs");
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("status");
        QTest::newRow("one end") << ConnectedAP("A", PhysConn("p", "c"))
                                 << "c  A S1 p  (one end only)" << 1;
        QTest::newRow("three ends")
            << ConnectedAP("A", PhysConn("p", "c")) + ConnectedAP("B", PhysConn("p", "c")) +
                   ConnectedAP("C", PhysConn("p", "c"))
            << "c  A S1 p  B S1 p  C S1 p  (more than two ends)" << 0;
        QTest::newRow("unknown IED")
            << ConnectedAP("A", PhysConn("p", "c")) + ConnectedAP("Z", PhysConn("p", "c"))
            << "c  A S1 p  Z S1 p  (an end at no access point of this file)" << 1;
        QTest::newRow("no port") << ConnectedAP("A", PhysConn("p", "c")) +
                                        ConnectedAP("B", PhysConn("", "c"))
                                 << "c  A S1 p          B S1 (no port)  (an end without port)" << 1;
        QTest::newRow("both ends in one place")
            << ConnectedAP("A", "<PhysConn><P type='Port'>p</P><P type='Port'>q</P>"
                                "<P type='Cable'>c</P><P type='Cable'>c</P></PhysConn>")
            << "c  A S1 p/q  (one end only)" << 1;
        QTest::newRow("a cable without a name")
            << ConnectedAP("A", "<PhysConn><P type='Port'>p</P><P type='Cable'/></PhysConn>")
            << "\"\"  A S1 p  (one end only)" << 1;
    }
    void whatIsRemarkableIsTold()
    {
        QFETCH(QByteArray, connectedAPs);
        QFETCH(QString, line);
        QFETCH(int, status);
        const CommandResult result = RunOn(Station(connectedAPs), {"cables"});

        QCOMPARE(result.output.section('\n', 0, 0), line);
        QCOMPARE(result.output.section('\n', 1, 1),
                 QString("Cables: 1, with faults: %1").arg(status));
        QCOMPARE(result.status, status);
    }

    void theJsonTellsTheEndsAndTheRemarks()
    {
        const CommandResult result =
            RunOn(Station(ConnectedAP("A", PhysConn("p", "c"))), {"cables", "--json"});

        const QJsonObject cable = JsonOf(result)["cables"].toArray()[0].toObject();
        QCOMPARE(cable["cable"].toString(), QString("c"));
        QCOMPARE(cable["remarks"].toArray(), QJsonArray({"one end only"}));
        const QJsonObject end = cable["ends"].toArray()[0].toObject();
        QCOMPARE(end["ied"].toString(), QString("A"));
        QCOMPARE(end["accessPoint"].toString(), QString("S1"));
        QCOMPARE(end["ports"].toArray(), QJsonArray({"p"}));
        QCOMPARE(end["isKnown"].toBool(), true);
        QCOMPARE(JsonOf(result)["faults"].toInt(), 1);
        QCOMPARE(result.status, 1);
    }

    void theDrawingShowsEachIedPortAndCable()
    {
        const QString svg = m_folder.Path("a.svg");
        const CommandResult result = RunOn(Joined(), {"cables", "--svg", svg});

        QCOMPARE(result.errors, QString());
        const Drawing drawing = ReadDrawing(svg);
        QVERIFY(drawing.isWellFormed);
        QCOMPARE(drawing.boxes.size(), 2);
        QCOMPARE(drawing.paths.size(), 1);
        for (const char* text : {"A", "B", "p1", "p2", "S1"})
            QVERIFY2(drawing.texts.contains(text), text);
        QVERIFY(drawing.texts.contains(QString("c ") + QChar(0x2192) + " B p2"));
        QVERIFY(drawing.texts.contains(QString("c ") + QChar(0x2192) + " A p1"));
        QCOMPARE(drawing.circles, 0);
    }

    void openEndsAndJunctionsAreMarked()
    {
        const QString svg = m_folder.Path("a.svg");
        RunOn(Station(ConnectedAP("A", PhysConn("p", "c") + PhysConn("q", "open")) +
                      ConnectedAP("B", PhysConn("p", "c")) + ConnectedAP("C", PhysConn("p", "c"))),
              {"cables", "--svg", svg});

        QCOMPARE(ReadDrawing(svg).circles, 2);
    }

    void whatTheFileHoldsIsEscapedInTheDrawing()
    {
        const QString svg = m_folder.Path("a.svg");
        RunOn(Station(ConnectedAP("A", PhysConn("&lt;&amp;&quot;]]&gt;&#9;", "c"))),
              {"cables", "--svg", svg});

        const Drawing drawing = ReadDrawing(svg);
        QVERIFY(drawing.isWellFormed);
        QVERIFY2(drawing.texts.contains("<&\"]]>\\t"), qPrintable(drawing.texts.join('|')));
    }

    void theSampleIsDrawnWithoutOverlaps()
    {
        const QString svg = m_folder.Path("a.svg");
        const CommandResult result = RunCommand({"cables", SampleStation(), "--svg", svg});

        QCOMPARE(result.output.section('\n', -2, -2), QString("Cables: 11, with faults: 0"));
        QCOMPARE(result.status, 0);
        const Drawing drawing = ReadDrawing(svg);
        QCOMPARE(drawing.boxes.size(), 5);
        for (int i = 1; i < drawing.boxes.size(); ++i)
            QVERIFY(drawing.boxes[i].top() > drawing.boxes[i - 1].bottom());
        const QList<Lane> lanes = LanesOf(drawing);
        QCOMPARE(lanes.size(), 11);
        for (int i = 0; i < lanes.size(); ++i) {
            QVERIFY(lanes[i].x > drawing.boxes[0].right());
            QVERIFY(lanes[i].top < lanes[i].bottom);
            for (int k = 0; k < i; ++k)
                QVERIFY(lanes[i].x != lanes[k].x || lanes[i].top > lanes[k].bottom ||
                        lanes[k].top > lanes[i].bottom);
        }
    }

    void aDrawingThatCannotBeWrittenIsToldBeforeAnyAnswer()
    {
        const CommandResult result =
            RunOn(Joined(), {"cables", "--svg", m_folder.Path("none/a.svg")});

        QCOMPARE(result.output, QString());
        QVERIFY(!result.errors.isEmpty());
        QCOMPARE(result.status, 2);
    }

    void aStationWithoutCablesHasNone()
    {
        const QString svg = m_folder.Path("a.svg");
        const CommandResult result = RunOn("<SCL/>", {"cables", "--svg", svg});

        QCOMPARE(result.output, QString("Cables: 0, with faults: 0\n"));
        QCOMPARE(result.status, 0);
        QVERIFY(ReadDrawing(svg).isWellFormed);
    }

    void theHelpTellsTheOptions() { CompareHelp("cables", {"--svg", "--json"}); }

private:
    TempFolder m_folder;
};

QTEST_GUILESS_MAIN(CablesCommandTest)
#include "CablesCommandTest.moc"
