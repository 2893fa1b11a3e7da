// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace Corvane::Bench
{

/// What a ratio must not exceed.
struct Target {
    double reach;
    double aim;
};

/// A table of measured ratios beside their targets.
class Figures
{
public:
    explicit Figures(const QString& title);

    /// A ratio that has a target.
    void Add(const QString& what, const QString& station, double measured, const Target& target);
    /// A plain figure: a time, a number of elements.
    void Add(const QString& what, const QString& station, double measured, const QString& unit);
    void Print() const;

private:
    QString m_strTitle;
    QVector<QStringList> m_rows;
};

/// Prints rows of equal length as columns; the first row is the head.
void PrintTable(const QString& title, const QVector<QStringList>& rows);

} // namespace Corvane::Bench
