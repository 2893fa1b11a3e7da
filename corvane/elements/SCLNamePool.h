// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringView>

#include <memory>

namespace Corvane::Internal
{

class NameIndex;

/// The table of the process that turns tag names and attribute names into 16-bit ids, so that an
/// element and an attribute carry two bytes and no text for their name.
///
/// Tags and attribute names are pooled apart: the tag `name` and the attribute `name` have
/// unrelated ids. Ids start at 1 and rise by 1 in the order of first use, a name once pooled stays
/// for the life of the pool, and name and id are one to one. The empty text is a name like any
/// other. Names compare exactly and case-sensitively.
///
/// Ids mean something only inside the running process and are never written to a file. The same
/// name may have another id in another run.
///
/// SCLDocControl creates the pool and owns it. A host needs it only to build elements outside any
/// control, in tests for example. Like the whole library it serves one thread.
class CORVANE_EXPORT SCLNamePool : public QObject
{
    Q_OBJECT

public:
    /// The id that stands for no name at all.
    static constexpr unsigned short m_uInvalidId = 0;

    /// Makes an empty pool and makes it the one that Instance() returns.
    /// \param parent owner as of `QObject`; may be null.
    explicit SCLNamePool(QObject* parent = nullptr);
    ~SCLNamePool() override;

    /// The pool of the process, or null before an SCLDocControl was constructed. Creates nothing.
    static SCLNamePool* Instance();

    /// The id of the tag \a name, which is added if it is new.
    ///
    /// A pool holds 65,535 tags at most. When it is full, a new name is not added and the result is
    /// #m_uInvalidId.
    unsigned short AddTagToNamePool(const QString& name);
    /// As AddTagToNamePool(), for attribute names.
    unsigned short AddAttToNamePool(const QString& name);

    /// As AddTagToNamePool() for a text that is no `QString` yet: nothing is allocated for a name
    /// that the pool knows already.
    unsigned short InternTag(QStringView name);
    /// As InternTag(), for attribute names.
    unsigned short InternAtt(QStringView name);

    /// The id of the tag \a name, or #m_uInvalidId if it was never pooled. Never adds.
    unsigned short GetIdFromTag(const QString& name) const;
    /// As GetIdFromTag(), for attribute names.
    unsigned short GetIdFromAtt(const QString& name) const;

    /// The tag of \a id, or a null `QString` for 0 and for ids that were never handed out.
    QString GetTagFromId(unsigned short id) const;
    /// As GetTagFromId(), for attribute names.
    QString GetAttFromId(unsigned short id) const;

    /// The last id handed out for a tag, 0 in a new pool. It rises exactly when a tag is added, so
    /// that a table kept by tag id can tell whether it is complete.
    unsigned short GetLastTagId() const { return m_uLastTagId; }

private:
    Q_DISABLE_COPY(SCLNamePool)

    static SCLNamePool* m_pInstance;

    unsigned short m_uLastTagId = 0;
    QMap<unsigned short, QString> m_mapTag;
    unsigned short m_uLastAttId = 0;
    QMap<unsigned short, QString> m_mapAtt;
    std::unique_ptr<NameIndex> m_pTagIndex;
    std::unique_ptr<NameIndex> m_pAttIndex;
};

} // namespace Corvane::Internal
