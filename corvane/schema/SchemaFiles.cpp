// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SchemaFiles.h>

#include <corvane/schema/SchemaBounds.h>
#include <corvane/schema/XercesText.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>

namespace Corvane::Internal
{

namespace
{

constexpr int g_maxFiles = 256;
constexpr qint64 g_maxFileSize = 16LL * 1024 * 1024;

xercesc::InputSource* NewSource(const QByteArray& content, const QString& path)
{
    return new xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(content.constData()),
                                          static_cast<XMLSize_t>(content.size()),
                                          ToXerces(path).data());
}

/// The canonical path, so that each file has one name however it is reached.
QString RegularFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() ? info.canonicalFilePath() : QString();
}

bool NamesNetworkShare(const QString& location)
{
    const QString path = QDir::fromNativeSeparators(location);
    return path.startsWith(QLatin1String("//")) || path.startsWith(QLatin1String("\\\\"));
}

/// The local path that a location means, or an empty text. \a decoded takes percent escapes as
/// such.
QString LocalPath(const QString& location, bool decoded)
{
    const QUrl url(location);
    // A single letter is the drive of a path.
    if (url.scheme().size() > 1 && decoded)
        return url.isLocalFile() && url.host().isEmpty() ? url.toLocalFile() : QString();
    if (NamesNetworkShare(location))
        return {};
    return decoded ? QUrl::fromPercentEncoding(location.toUtf8()) : location;
}

QString FindFile(const QString& location, const QString& baseFile)
{
    const QDir folder = QFileInfo(baseFile).dir();
    for (const bool decoded : {false, true}) {
        const QString path = LocalPath(location, decoded);
        if (path.isEmpty() || NamesNetworkShare(path))
            continue;
        QString file = RegularFile(folder.absoluteFilePath(path));
        if (!file.isEmpty())
            return file;
    }
    return {};
}

QByteArray ReadAtMost(const QString& path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
}

} // namespace

xercesc::InputSource* SchemaFiles::Open(const QString& path)
{
    const QString file = RegularFile(path);
    return NewSource(file.isEmpty() ? QByteArray() : Content(file), file);
}

xercesc::InputSource* SchemaFiles::resolveEntity(xercesc::XMLResourceIdentifier* identifier)
{
    using Identifier = xercesc::XMLResourceIdentifier;

    // Here a null result would make the parser open the entity by itself.
    if (identifier->getResourceIdentifierType() == Identifier::ExternalEntity)
        return NewSource({}, {});
    const QString location = FromXerces(identifier->getSystemId());
    const QString file =
        location.isEmpty() ? location : FindFile(location, FromXerces(identifier->getBaseURI()));
    return file.isEmpty() ? nullptr : NewSource(Content(file), file);
}

const QByteArray& SchemaFiles::Content(const QString& path)
{
    const auto known = m_contents.constFind(path);
    if (known != m_contents.constEnd())
        return *known;

    QByteArray content;
    if (m_contents.size() < g_maxFiles)
        content = ReadAtMost(path, g_maxFileSize + 1);
    if (m_contents.size() >= g_maxFiles || content.size() > g_maxFileSize ||
        !IsWithinSchemaBounds(content)) {
        m_bRefused = true;
        content.clear();
    }
    return *m_contents.insert(path, content);
}

} // namespace Corvane::Internal
