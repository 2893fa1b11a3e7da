// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace Corvane::Internal
{

/// Whether Xerces-C can take an XSD file in without harm, going by its bytes.
///
/// Not so if it is nested very deep, declares entities or attribute defaults of its own, has an
/// external document type, or has content models or occurrences of a size that no schema of
/// practice has. What is not well-formed counts up to its fault, which is also where the loading
/// stops.
bool IsWithinSchemaBounds(const QByteArray& xsd);

} // namespace Corvane::Internal
