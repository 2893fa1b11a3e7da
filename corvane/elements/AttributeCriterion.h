// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QVarLengthArray>

#include <initializer_list>
#include <utility>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// What a search requires of an element's attributes, with the names looked up once per search.
class AttributeCriterion
{
public:
    explicit AttributeCriterion(const QMap<QString, QString>& attributes);
    AttributeCriterion(const QString& name, const QString& value);
    /// The terms are tested in the order given.
    AttributeCriterion(std::initializer_list<std::pair<QString, QString>> attributes);

    using Term = std::pair<unsigned short, QString>;

    bool Matches(const SCLElement* element) const;

    /// Attribute ids and required values. Id 0 is a name that no element has.
    const QVarLengthArray<Term, 6>& Terms() const { return m_terms; }

private:
    void Add(const QString& name, const QString& value);

    QVarLengthArray<Term, 6> m_terms;
};

} // namespace Internal
} // namespace Corvane
