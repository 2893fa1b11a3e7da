// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <cstddef>

namespace Corvane::Internal
{

/// A hash with the seed of the process, so that no file can be written to make its texts collide.
inline std::size_t SeededHash(QStringView text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
    return qHash(text, QHashSeed::globalSeed());
#else
    return qHash(text, static_cast<uint>(qGlobalQHashSeed()));
#endif
}

/// The same for containers of the standard library.
struct SeededTextHash {
    std::size_t operator()(const QString& text) const { return SeededHash(text); }
};

} // namespace Corvane::Internal
