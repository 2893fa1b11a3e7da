// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

namespace Corvane::Bench
{

/// R: a bare QXmlStreamReader loop over the file, namespace processing off.
///
/// \return the number of elements, so that no compiler leaves the loop out; -1 if the file cannot
///         be read.
int ReadBare(const QString& fileName);

/// W: the tokens of a file, kept in memory, to be written by a bare QXmlStreamWriter.
class BareWriter
{
public:
    /// Records the elements, attributes and texts of a file; equal texts share one QString.
    ///
    /// \return false if it cannot be read.
    bool Record(const QString& fileName);
    /// Writes what was recorded, indented by 2, to a file.
    ///
    /// \return false if it cannot be written.
    bool Write(const QString& fileName) const;
    /// The number of recorded elements.
    int ElementCount() const { return m_nElements; }

private:
    enum class Token { Start, Attribute, Text, End };

    struct Operation {
        Token token;
        QString name;
        QString value;
    };

    QVector<Operation> m_operations;
    int m_nElements = 0;
};

/// (N+1)c: \a steps progress steps, as saving takes one for each element.
void RunProgressSteps(int steps);

} // namespace Corvane::Bench
