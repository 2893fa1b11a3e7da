// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SchemaAccess.h>

#include <corvane/schema/SCLGrammarPool.h>

namespace Corvane::Internal
{

SCLElementType* FindRootType(const QString& tag)
{
    SCLGrammarPool* pool = SCLGrammarPool::Instance();
    return pool ? pool->FindRootType(tag) : nullptr;
}

} // namespace Corvane::Internal
