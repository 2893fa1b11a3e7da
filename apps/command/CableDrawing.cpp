// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CableDrawing.h"

#include "apps/command/Report.h"
#include "apps/command/Wiring.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QHash>
#include <QSet>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

namespace Corvane::Command
{

namespace
{

// All measures are in pixels.
constexpr int margin = 24;
constexpr int titleHeight = 56;
constexpr int rowHeight = 24;
constexpr int headHeight = 44;
constexpr int boxGap = 20;
constexpr int boxWidth = 260;
constexpr int plugSize = 10;
constexpr int laneWidth = 14;
constexpr int labelGap = 18;
// How many characters of a name are shown, in general and in the columns of a box.
constexpr int longestText = 30;
constexpr int longestAccessPoint = 9;
constexpr int longestPort = 18;

const char* const colours[] = {"#1f5fa8", "#c2410c", "#15803d", "#7e22ce", "#0e7490", "#be123c",
                               "#4d5a15", "#92400e", "#4338ca", "#0f766e", "#a21caf", "#57534e"};
constexpr int colourCount = sizeof(colours) / sizeof(colours[0]);

// Wide for letters of East Asia, as fonts have them.
int WidthOf(const QString& text, double size)
{
    double width = 0;
    for (const QChar letter : text)
        width += letter.unicode() < 0x2E80 ? 0.7 : 1.05;
    return static_cast<int>(width * size) + 1;
}

QString Shortened(const QString& text, int longest = longestText)
{
    const QString shown = Escaped(text);
    return shown.size() <= longest ? shown : shown.left(longest - 1) + QChar(0x2026);
}

// A place where a cable, or none, meets the rim of an IED.
struct Row {
    int plug;
    QString cable;
    /// What stands on the line: the cable and where it leads.
    QString label;
    int y;
};

struct Box {
    QString ied;
    QString description;
    bool isKnown;
    QList<Row> rows;
    int top;
    int height;
};

// What of the drawing belongs to one cable.
struct Line {
    QString cable;
    QList<int> ends;
    int lane;
};

// The IEDs of the file that have a plug, then those that only the network names.
QList<Box> BoxesOf(SCLElement* root, const Wiring& wiring)
{
    QList<Box> boxes;
    QSet<QString> seen;
    const QList<SCLElement*> ieds = root->FindChildByType(QLatin1String(g_szTagIED), false);
    for (SCLElement* ied : ieds) {
        const QString name = ied->GetAttribute(QStringLiteral("name"));
        if (seen.contains(name) || wiring.PlugsOf(name).isEmpty())
            continue;
        seen.insert(name);
        boxes.append({name, ied->GetAttribute(QStringLiteral("desc")), true, {}, 0, 0});
    }
    for (const Wiring::Plug& plug : wiring.Plugs()) {
        if (seen.contains(plug.ied))
            continue;
        seen.insert(plug.ied);
        boxes.append({plug.ied, QStringLiteral("not in this file"), false, {}, 0, 0});
    }
    return boxes;
}

// The cable with the IED and port at its other end; of several, the first and how many more.
QString LabelOf(const Wiring& wiring, int plug, const QString& cable)
{
    QList<int> ends = wiring.EndsOf(cable);
    ends.removeOne(plug);
    if (ends.isEmpty())
        return Shortened(cable);
    const Wiring::Plug& first = wiring.Plugs()[ends.constFirst()];
    QString far = Shortened(first.ied) + QLatin1Char(' ') +
                  Shortened(first.ports.join(QStringLiteral(" / ")));
    if (ends.size() > 1)
        far += QStringLiteral(" +%1").arg(static_cast<int>(ends.size()) - 1);
    return Shortened(cable) + QStringLiteral(" \u2192 ") + far;
}

// A plug has a row for each of its cables, or one if it has none.
void AddRows(Box& box, const Wiring& wiring)
{
    const QList<int> plugs = wiring.PlugsOf(box.ied);
    for (int plug : plugs) {
        QStringList cables = wiring.Plugs()[plug].cables;
        cables.removeDuplicates();
        if (cables.isEmpty())
            cables.append(QString());
        for (const QString& cable : std::as_const(cables))
            box.rows.append(
                {plug, cable, cable.isEmpty() ? QString() : LabelOf(wiring, plug, cable), 0});
    }
}

// Where everything stands.
class Layout
{
public:
    Layout(SCLElement* root, const Wiring& wiring) : m_boxes(BoxesOf(root, wiring))
    {
        int y = margin + titleHeight;
        for (Box& box : m_boxes) {
            AddRows(box, wiring);
            Place(box, y);
            y += box.height + boxGap;
        }
        m_height = y - boxGap + margin;
        GatherLines(wiring);
        AssignLanes();
    }

    const QList<Box>& Boxes() const { return m_boxes; }
    const QList<Line>& Lines() const { return m_lines; }
    int Rim() const { return margin + boxWidth; }
    int LaneX(int lane) const { return m_firstLane + lane * laneWidth; }
    int Width() const { return LaneX(m_laneCount) + margin; }
    int Height() const { return m_height; }

private:
    void Place(Box& box, int y)
    {
        box.top = y;
        box.height = headHeight + static_cast<int>(box.rows.size()) * rowHeight + rowHeight / 4;
        int centre = y + headHeight + rowHeight / 2;
        for (Row& row : box.rows) {
            row.y = centre;
            centre += rowHeight;
        }
    }
    void GatherLines(const Wiring& wiring);
    void AssignLanes();

    QList<Box> m_boxes;
    QList<Line> m_lines;
    int m_height = 0;
    int m_firstLane = 0;
    int m_laneCount = 0;
};

void Layout::GatherLines(const Wiring& wiring)
{
    QHash<QString, int> positions;
    for (const QString& cable : wiring.Cables()) {
        positions.insert(cable, static_cast<int>(m_lines.size()));
        m_lines.append({cable, {}, 0});
    }
    int widestLabel = 0;
    for (const Box& box : std::as_const(m_boxes)) {
        for (const Row& row : box.rows) {
            const int position = positions.value(row.cable, -1);
            if (position < 0)
                continue;
            m_lines[position].ends.append(row.y);
            widestLabel = std::max(widestLabel, WidthOf(row.label, 11));
        }
    }
    m_firstLane = Rim() + plugSize + labelGap + widestLabel + labelGap;
}

// Short cables get the inner lanes. A lane is free for a cable if nothing in it reaches as far.
void Layout::AssignLanes()
{
    QList<Line*> order;
    for (Line& line : m_lines)
        order.append(&line);
    const auto top = [](const Line* line) { return line->ends.constFirst(); };
    const auto bottom = [](const Line* line) { return line->ends.constLast(); };
    std::stable_sort(order.begin(), order.end(), [&](const Line* a, const Line* b) {
        return bottom(a) - top(a) < bottom(b) - top(b);
    });
    QList<QList<QPair<int, int>>> lanes;
    for (Line* line : std::as_const(order)) {
        const auto isFree = [&](const QList<QPair<int, int>>& lane) {
            return std::none_of(lane.cbegin(), lane.cend(), [&](const QPair<int, int>& taken) {
                return top(line) <= taken.second && bottom(line) >= taken.first;
            });
        };
        const auto lane = std::find_if(lanes.cbegin(), lanes.cend(), isFree);
        line->lane = static_cast<int>(lane - lanes.cbegin());
        if (lane == lanes.cend())
            lanes.append(QList<QPair<int, int>>());
        lanes[line->lane].append({top(line), bottom(line)});
    }
    m_laneCount = static_cast<int>(lanes.size());
}

class Painter
{
public:
    Painter(QByteArray& bytes, const Layout& layout, const Wiring& wiring)
        : m_writer(&bytes), m_layout(layout), m_wiring(wiring)
    {
    }

    void Paint();

private:
    void Begin();
    void PaintTitle();
    void PaintBox(const Box& box);
    void PaintRow(const Row& row);
    void PaintLine(const Line& line, const QString& colour);
    void PaintLabel(const Row& row);

    void Element(const char* tag, std::initializer_list<QPair<const char*, QString>> attributes)
    {
        m_writer.writeStartElement(QLatin1String(tag));
        for (const auto& attribute : attributes)
            m_writer.writeAttribute(QLatin1String(attribute.first), attribute.second);
    }
    void Empty(const char* tag, std::initializer_list<QPair<const char*, QString>> attributes)
    {
        Element(tag, attributes);
        End();
    }
    // One element a line. The writer's own formatting would put blanks into texts.
    void End()
    {
        m_writer.writeEndElement();
        m_writer.writeCharacters(QStringLiteral("\n"));
    }
    // What was shortened shows whole when pointed at.
    void Text(int x, int y, const char* style, const QString& text, int longest = longestText)
    {
        Element("text", {{"x", Number(x)}, {"y", Number(y)}, {"class", QLatin1String(style)}});
        const QString shown = Shortened(text, longest);
        if (shown != text)
            m_writer.writeTextElement(QStringLiteral("title"), Escaped(text));
        m_writer.writeCharacters(shown);
        End();
    }
    static QString Number(int number) { return QString::number(number); }

    QXmlStreamWriter m_writer;
    const Layout& m_layout;
    const Wiring& m_wiring;
};

void Painter::Paint()
{
    Begin();
    PaintTitle();
    int colour = 0;
    for (const Line& line : m_layout.Lines())
        PaintLine(line, QLatin1String(colours[colour++ % colourCount]));
    for (const Box& box : m_layout.Boxes())
        PaintBox(box);
    m_writer.writeEndElement();
    m_writer.writeEndDocument();
}

void Painter::Begin()
{
    const QString width = Number(m_layout.Width());
    const QString height = Number(m_layout.Height());
    m_writer.writeStartDocument();
    Element("svg", {{"xmlns", QStringLiteral("http://www.w3.org/2000/svg")},
                    {"width", width},
                    {"height", height},
                    {"viewBox", QStringLiteral("0 0 %1 %2").arg(width, height)}});
    m_writer.writeTextElement(
        QStringLiteral("style"),
        QStringLiteral("text{font-family:'DejaVu Sans','Noto Sans','Noto Sans CJK "
                       "SC',sans-serif;font-size:12px;fill:#1c1917}"
                       ".title{font-size:20px;font-weight:bold}"
                       ".name{font-size:15px;font-weight:bold}"
                       ".small{font-size:11px;fill:#57534e}"
                       ".cable{font-size:11px}"
                       ".port{text-anchor:end}"));
    Empty("rect", {{"width", width}, {"height", height}, {"fill", QStringLiteral("#ffffff")}});
}

void Painter::PaintTitle()
{
    Text(margin, margin + 16, "title", QStringLiteral("Cables"));
    Text(margin, margin + 36, "small",
         QStringLiteral("%1 IEDs, %2 cables")
             .arg(static_cast<int>(m_layout.Boxes().size()))
             .arg(static_cast<int>(m_layout.Lines().size())));
}

void Painter::PaintBox(const Box& box)
{
    Empty("rect",
          {{"x", Number(margin)},
           {"y", Number(box.top)},
           {"width", Number(boxWidth)},
           {"height", Number(box.height)},
           {"rx", QStringLiteral("6")},
           {"fill", box.isKnown ? QStringLiteral("#f5f5f4") : QStringLiteral("#ffffff")},
           {"stroke", QStringLiteral("#44403c")},
           {"stroke-dasharray", box.isKnown ? QStringLiteral("none") : QStringLiteral("5 4")}});
    Text(margin + 12, box.top + 20, "name", box.ied);
    Text(margin + 12, box.top + 36, "small", box.description);
    for (const Row& row : box.rows)
        PaintRow(row);
}

void Painter::PaintRow(const Row& row)
{
    const Wiring::Plug& plug = m_wiring.Plugs()[row.plug];
    const QString accessPoint =
        plug.isKnown ? plug.accessPoint : plug.accessPoint + QStringLiteral(" (?)");
    Text(margin + 24, row.y + 4, "small", accessPoint, longestAccessPoint);
    Text(m_layout.Rim() - plugSize - 4, row.y + 4, "port", plug.ports.join(QStringLiteral(" / ")),
         longestPort);
    Empty("rect",
          {{"x", Number(m_layout.Rim() - plugSize / 2)},
           {"y", Number(row.y - plugSize / 2)},
           {"width", Number(plugSize)},
           {"height", Number(plugSize)},
           {"fill", row.cable.isEmpty() ? QStringLiteral("#ffffff") : QStringLiteral("#44403c")},
           {"stroke", QStringLiteral("#44403c")}});
    if (!row.cable.isEmpty())
        PaintLabel(row);
}

// On white, so that it stands on its own line and not in it.
void Painter::PaintLabel(const Row& row)
{
    const int x = m_layout.Rim() + plugSize + labelGap / 2;
    Empty("rect", {{"x", Number(x - 3)},
                   {"y", Number(row.y - 8)},
                   {"width", Number(WidthOf(row.label, 11) + 6)},
                   {"height", QStringLiteral("16")},
                   {"fill", QStringLiteral("#ffffff")}});
    Element("text",
            {{"x", Number(x)}, {"y", Number(row.y + 4)}, {"class", QStringLiteral("cable")}});
    m_writer.writeCharacters(row.label);
    End();
}

void Painter::PaintLine(const Line& line, const QString& colour)
{
    const int x = m_layout.LaneX(line.lane);
    QString path;
    for (int y : line.ends)
        path += QStringLiteral("M%1 %2H%3").arg(m_layout.Rim()).arg(y).arg(x);
    path +=
        QStringLiteral("M%1 %2V%3").arg(x).arg(line.ends.constFirst()).arg(line.ends.constLast());
    Element("path", {{"d", path},
                     {"fill", QStringLiteral("none")},
                     {"stroke", colour},
                     {"stroke-width", QStringLiteral("2")},
                     {"stroke-linecap", QStringLiteral("round")}});
    m_writer.writeTextElement(QStringLiteral("title"), Escaped(line.cable));
    End();
    // Where more than two ends meet, and where there is no other.
    const bool isOpen = line.ends.size() == 1;
    for (decltype(line.ends.size()) i = isOpen ? 0 : 1; i < line.ends.size() - (isOpen ? 0 : 1);
         ++i)
        Empty("circle", {{"cx", Number(x)},
                         {"cy", Number(line.ends[i])},
                         {"r", QStringLiteral("4")},
                         {"fill", isOpen ? QStringLiteral("#ffffff") : colour},
                         {"stroke", colour},
                         {"stroke-width", QStringLiteral("2")}});
}

} // namespace

QByteArray DrawingOf(SCLElement* root, const Wiring& wiring)
{
    QByteArray bytes;
    const Layout layout(root, wiring);
    Painter(bytes, layout, wiring).Paint();
    return bytes;
}

} // namespace Corvane::Command
