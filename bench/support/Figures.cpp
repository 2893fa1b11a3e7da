// SPDX-License-Identifier: Apache-2.0
#include "Figures.h"

#include <QTextStream>

namespace Corvane::Bench
{

namespace
{

QString Number(double value)
{
    return QString::number(value, 'f', 3);
}

QString Verdict(double measured, const Target& target)
{
    if (measured <= target.aim) {
        return "aim met";
    }
    return measured <= target.reach ? "reached" : "missed";
}

QVector<int> Widths(const QVector<QStringList>& rows)
{
    QVector<int> widths(static_cast<int>(rows.first().size()));
    for (const QStringList& row : rows) {
        for (int column = 0; column < widths.size(); ++column) {
            widths[column] = qMax(widths[column], static_cast<int>(row[column].size()));
        }
    }
    return widths;
}

} // namespace

Figures::Figures(const QString& title)
    : m_strTitle(title), m_rows{{"figure", "station", "measured", "reach", "aim", ""}}
{
}

void Figures::Add(const QString& what, const QString& station, double measured,
                  const Target& target)
{
    m_rows.append({what, station, Number(measured), Number(target.reach), Number(target.aim),
                   Verdict(measured, target)});
}

void Figures::Add(const QString& what, const QString& station, double measured, const QString& unit)
{
    m_rows.append({what, station, Number(measured) + ' ' + unit, "", "", ""});
}

void Figures::Print() const
{
    PrintTable(m_strTitle, m_rows);
}

void PrintTable(const QString& title, const QVector<QStringList>& rows)
{
    QTextStream out(stdout);
    out << '\n' << title << '\n';
    const QVector<int> widths = Widths(rows);
    for (const QStringList& row : rows) {
        for (int column = 0; column < widths.size(); ++column) {
            out << row[column].leftJustified(widths[column] + 2);
        }
        out << '\n';
    }
}

} // namespace Corvane::Bench
