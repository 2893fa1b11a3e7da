// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QByteArray>
#include <QString>

namespace Corvane
{

/// Whether a binary image is whole. SCLDocument::ReadBinary() reports no failure, so a host that
/// did not write an image itself looks at it with this first.
///
/// A whole image is one element record and nothing else: each text and each count lies within the
/// bytes, texts have an even number of bytes, and the records that counts promise are there. That
/// says nothing about names, values or the root's tag. What a whole image holds is bounded by its
/// size, and ReadBinary() reads all of it.
///
/// The check builds nothing, and its memory does not depend on the image.
struct CORVANE_EXPORT SCLBinaryCheck {
    enum class Fault {
        /// The image is whole.
        None,
        /// The bytes end where a length or a count has to stand, or inside it.
        EndsEarly,
        /// A text is longer than the bytes that follow.
        TextTooLong,
        /// A text has an odd number of bytes.
        OddText,
        /// A count is negative.
        NegativeCount,
        /// The bytes that follow cannot hold as many records as a count promises, besides those
        /// that were promised before.
        CountTooLarge,
        /// Bytes follow behind the record.
        BytesBehind
    };

    Fault fault = Fault::None;
    /// Where the length or the count that is wrong begins; for BytesBehind the first byte behind
    /// the record. The size of a whole image.
    qint64 offset = 0;
    /// An English sentence for people, without the offset; empty for a whole image.
    QString text;

    bool IsWhole() const { return fault == Fault::None; }

    static SCLBinaryCheck Of(const QByteArray& bytes);
};

} // namespace Corvane
