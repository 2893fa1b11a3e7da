// SPDX-License-Identifier: Apache-2.0
#include <corvane/presentation/SCLIconProvider.h>

#include <corvane/elements/SCLVocabulary.h>

#include <QMap>

namespace Corvane
{

namespace
{

struct TypeImage {
    SCLIconProvider::SclIconType type;
    const char* image;
};

struct TagImage {
    const char* tag;
    const char* image;
};

constexpr TypeImage typeImages[] = {
    {SCLIconProvider::SclIconScl, "scl"},
    {SCLIconProvider::SclIconFolder, "folder"},
    {SCLIconProvider::SclIconNetwork, "network"},
    {SCLIconProvider::SclIconGse, "gse"},
    {SCLIconProvider::SclIconSmv, "smv"},
    {SCLIconProvider::SclIconIed, "ied"},
    {SCLIconProvider::SclIconAp, "ap"},
    {SCLIconProvider::SclIconLd, "ld"},
    {SCLIconProvider::SclIconLn, "ln"},
    {SCLIconProvider::SclIconLn0, "ln0"}, // no such image: a host may bring its own
    {SCLIconProvider::SclIconDoi, "doi"},
    {SCLIconProvider::SclIconSdi, "sdi"},
    {SCLIconProvider::SclIconDai, "dai"},
    {SCLIconProvider::SclIconVal, "val"},
    {SCLIconProvider::SclIconDataset, "dataset"},
    {SCLIconProvider::SclIconFcda, "fcda"},
    {SCLIconProvider::SclIconFc, "fc"},
    {SCLIconProvider::SclIconDo, "do"},
    {SCLIconProvider::SclIconSdo, "sdo"},
    {SCLIconProvider::SclIconDa, "da"},
    {SCLIconProvider::SclIconBda, "bda"},
    {SCLIconProvider::SclIconLnType, "lntype"},
    {SCLIconProvider::SclIconDoType, "dotype"},
    {SCLIconProvider::SclIconDaType, "datype"},
    {SCLIconProvider::SclIconEnumType, "enumtype"},
    {SCLIconProvider::SclIconEnumVal, "enumval"},
    {SCLIconProvider::SclIconSub, "sub"},
    {SCLIconProvider::SclIconVLevel, "vlevel"},
    {SCLIconProvider::SclIconBay, "bay"},
    {SCLIconProvider::SclIconDoubleTrans, "doubletrans"},
    {SCLIconProvider::SclIconTrebleTrans, "trebletrans"},
    {SCLIconProvider::SclIconWinding, "winding"},
    {SCLIconProvider::SclIconBus, "bus"},
    {SCLIconProvider::SclIconBreaker, "breaker"},
    {SCLIconProvider::SclIconSwitch, "switch"},
    {SCLIconProvider::SclIconCapacitor, "capacitor"},
    {SCLIconProvider::SclIconEarth, "earth"},
    {SCLIconProvider::SclIconGenerator, "generator"},
    {SCLIconProvider::SclIconInfeed, "infeed"},
    {SCLIconProvider::SclIconReactor, "reactor"},
    {SCLIconProvider::SclIconTa, "ta"},
    {SCLIconProvider::SclIconTv, "tv"},
    {SCLIconProvider::SclIconCNode, "cnode"},
    {SCLIconProvider::SclIconTerminal, "terminal"},
};

const TagImage tagImages[] = {
    {g_szTagSCL, "scl"},
    {g_szTagGSE, "gse"},
    {g_szTagSMV, "smv"},
    {g_szTagIED, "ied"},
    {g_szTagAccessPoint, "ap"},
    {g_szTagLDevice, "ld"},
    {g_szTagLN, "ln"},
    {g_szTagLN0, "ln"},
    {g_szTagDOI, "doi"},
    {g_szTagSDI, "sdi"},
    {g_szTagDAI, "dai"},
    {g_szTagVal, "val"},
    {g_szTagDataSet, "dataset"},
    {g_szTagFCDA, "fcda"},
    {g_szTagDO, "do"},
    {g_szTagSDO, "sdo"},
    {g_szTagDA, "da"},
    {g_szTagBDA, "bda"},
    {g_szTagLNodeType, "lntype"},
    {g_szTagDOType, "dotype"},
    {g_szTagDAType, "datype"},
    {g_szTagEnumType, "enumtype"},
    {g_szTagEnumVal, "enumval"},
    {g_szTagSubstation, "sub"},
};

QIcon EmbeddedIcon(const char* image)
{
    return QIcon(QStringLiteral(":/corvane/images/scl_%1.png").arg(QLatin1String(image)));
}

} // namespace

struct SCLIconProvider::Icons {
    QMap<int, QIcon> m_typeIcons;
    QMap<QString, QIcon> m_tagIcons;
};

SCLIconProvider* SCLIconProvider::m_pInstance = nullptr;

SCLIconProvider::SCLIconProvider(QObject* parent)
    : QObject(parent), m_pIcons(std::make_unique<Icons>())
{
    m_pInstance = this;
    for (const TypeImage& entry : typeImages)
        m_pIcons->m_typeIcons.insert(entry.type, EmbeddedIcon(entry.image));
    for (const TagImage& entry : tagImages)
        m_pIcons->m_tagIcons.insert(QLatin1String(entry.tag), EmbeddedIcon(entry.image));
}

SCLIconProvider::~SCLIconProvider() = default;

SCLIconProvider* SCLIconProvider::Instantce()
{
    return m_pInstance;
}

QIcon SCLIconProvider::GetSclIcon(SclIconType type) const
{
    return m_pIcons->m_typeIcons.value(type);
}

QIcon SCLIconProvider::GetSclIcon(const QString& tag) const
{
    return m_pIcons->m_tagIcons.value(tag);
}

void SCLIconProvider::RegisterSclIcon(SclIconType type, const QIcon& icon)
{
    m_pIcons->m_typeIcons.insert(type, icon);
}

} // namespace Corvane
