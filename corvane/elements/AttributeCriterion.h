// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>

#include <utility>
#include <vector>

namespace Corvane::Internal
{

/// What a search requires of an element's attributes, with the names looked up once per search.
class AttributeCriterion
{
public:
    explicit AttributeCriterion(const QMap<QString, QString>& attributes);
    AttributeCriterion(const QString& name, const QString& value);

    using Term = std::pair<unsigned short, QString>;

    /// Attribute ids and required values. Id 0 is a name that no element has.
    const std::vector<Term>& Terms() const { return m_terms; }

private:
    void Add(const QString& name, const QString& value);

    std::vector<Term> m_terms;
};

} // namespace Corvane::Internal
