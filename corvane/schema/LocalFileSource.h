// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <xercesc/sax/InputSource.hpp>

namespace Corvane::Internal
{

/// A file of the local file system as input of Xerces-C.
///
/// Xerces-C itself would take a text like `http:/a` for an address, and pass a path through the
/// code page of the process, which cannot express every path. Here the path goes to `QFile` as it
/// is.
class LocalFileSource : public xercesc::InputSource
{
public:
    explicit LocalFileSource(const QString& path);

    /// The open file, which the caller owns, or null if it cannot be opened.
    xercesc::BinInputStream* makeStream() const override;

private:
    QString m_path;
};

} // namespace Corvane::Internal
