// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane::Internal
{

class SCLElementType;

/// How the tree reaches the registered schema: the only piece of it that knows SCLGrammarPool.
///
/// \return the type of a global element of that \a tag, or null if the schema does not know it or
///         no schema was ever registered.
SCLElementType* FindRootType(const QString& tag);

} // namespace Corvane::Internal
