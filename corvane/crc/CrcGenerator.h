// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace Corvane
{

class SCLElement;

namespace Internal
{
class CrcElement;
class CrcTree;
} // namespace Internal

/// The virtual-terminal CRC of one IED: a CRC-32 over a canonical text of all that the IED sends
/// and receives by GOOSE and sampled values (IEC 61850-8-1, -9-2), as an SCL file (IEC 61850-6)
/// configures it.
///
/// The text is a small XML document. Its root is the IED with its name, and its sections, absent
/// where the IED has nothing of the kind, are in this order:
///
/// - `GOOSEPUB`: for each `GSEControl` of the IED the control block, its `ConnectedAP` and its
///   `DataSet` with the data behind each `FCDA`;
/// - `GOOSESUB`: for each `GSEControl` that inputs of the IED draw on the control block, its `GSE`
///   and its whole `DataSet`, with the inputs wired to each `FCDA` and the data behind them;
/// - `SVPUB` and `SVSUB`: the same for `SampledValueControl` and `SMV`.
///
/// Descriptions, and what else is of no effect between devices, are left out: whoever edits those
/// keeps the CRC. The readable form of the same content shows them too.
///
/// Register a schema with SCLDocControl::RegisterSchema() first: the children of copied elements
/// come in schema order, so that their order in the file has no effect. Under another schema the
/// same document may have another CRC. Children that the schema does not know follow in the order
/// in which the process met their tags.
///
/// SCLDocument::UpdateCrcCode() stores the CRCs of all IEDs in a document.
class CORVANE_EXPORT CrcGenerator
{
public:
    /// A form of the content; for a piece of the content, the forms that show it.
    enum GeneratorType {
        /// Without layout, what the CRC covers.
        GeneratorCanonical = 0,
        /// Indented, for people, with the CRC and the time at its end.
        GeneratorReadable = 1,
        /// Both of them.
        GeneratorBoth = 2
    };

    /// How a generation ended.
    enum CrcResult {
        /// All sections are complete.
        CrcSuccess = 0,
        /// There is no IED, or a section is incomplete: a control block without network parameters
        /// or data set, an input whose `intAddr` leads nowhere, content beyond any use.
        CrcFailed = 1,
        /// The IED sends and receives nothing of either kind.
        CrcNoConnection = 2
    };

    /// \param ied the `IED`, not owned; null gives CrcFailed. To find what it receives and where
    ///            its control blocks send to, it has to be in a document.
    explicit CrcGenerator(SCLElement* ied);
    ~CrcGenerator();

    /// Generates the content and its CRC. Only reads the tree, which must not change meanwhile.
    ///
    /// \param crc              the CRC, also of incomplete sections. Untouched for CrcNoConnection
    ///                         and if there is no IED, as are the contents.
    /// \param canonicalContent receives the bytes that the CRC covers, in UTF-8. May be null.
    /// \param readableContent  receives the readable form, in UTF-8, which ends with the element
    ///                         `CRC`: its `id` is the CRC in eight upper-case hexadecimal digits,
    ///                         `timestamp` the local time as "yyyy-MM-dd hh:mm:ss". May be null.
    CrcResult Gererate(unsigned int& crc, QByteArray* canonicalContent,
                       QByteArray* readableContent);

    /// The CRC-32 of texts that follow one another without anything between, in UTF-8. With the
    /// printed CRCs of the IEDs, sorted by the names of the IEDs, it is the CRC of the substation.
    ///
    /// \return 0 if there is no text or all are empty.
    static unsigned int Generate(const QStringList& strings);

private:
    friend class Internal::CrcTree;

    using ExcludedChildren = QMap<QString, QMap<QString, QString>>;
    struct CORVANE_NO_EXPORT Private;

    Q_DISABLE_COPY(CrcGenerator)

    Internal::CrcElement* BuildTree(CrcResult& result);
    Internal::CrcElement* BuildIED(bool& ok);
    Internal::CrcElement* BuildPub(bool isGoose, bool& ok);
    Internal::CrcElement* BuildSub(bool isGoose, bool& ok);
    Internal::CrcElement* CrcElementFromSclElement(SCLElement* element, bool recursive,
                                                   const QStringList& excludedAttributes,
                                                   const ExcludedChildren& excludedChildren);
    Internal::CrcElement* PubFcdaCrcElementFromSclElement(SCLElement* fcda, bool& ok);
    Internal::CrcElement* SubFcdaCrcElementFromSclElement(SCLElement* fcda,
                                                          QList<SCLElement*> extRefs, bool& ok);
    QByteArray BuildContent(Internal::CrcElement* root, GeneratorType type, unsigned int crc);

    Private* m_pPrivate;
};

} // namespace Corvane
