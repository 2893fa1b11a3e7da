// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <xercesc/util/XMLEntityResolver.hpp>

namespace Corvane::Internal
{

/// The files of one schema while it is loaded: the one that the host names, and what that includes
/// and imports.
///
/// Only regular local files are read, each once. A location is taken as it stands and then with its
/// percent escapes decoded; one that leads to no such file, and any address of a network, counts as
/// not given. External entities are empty.
///
/// Xerces-C recurses over nested schema elements and over inclusions, and expands entities and
/// occurrences without a limit. So each file is looked through beforehand, and one beyond the
/// bounds of SchemaFiles.cpp, which are far from those of any schema of practice, is refused.
class SchemaFiles : public xercesc::XMLEntityResolver
{
public:
    /// The input for \a path, which the caller owns: empty if it cannot be read or is refused.
    /// Valid as long as this object.
    xercesc::InputSource* Open(const QString& path);
    /// Whether a file was refused: what Xerces-C made of the schema is incomplete then.
    bool HasRefused() const { return m_bRefused; }

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* identifier) override;

private:
    const QByteArray& Content(const QString& path);

    bool m_bRefused = false;
    QHash<QString, QByteArray> m_contents;
};

} // namespace Corvane::Internal
