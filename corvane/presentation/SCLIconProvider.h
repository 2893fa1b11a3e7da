// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QIcon>
#include <QObject>
#include <QString>

#include <memory>

namespace Corvane
{

/// Icons for tree views of SCL files: one for each kind of element, and the host may replace them.
///
/// The host constructs it, after its QGuiApplication; nothing inside the library asks it for an
/// icon. It belongs to the GUI thread, as QIcon does.
///
/// The images are PNG files of 64 by 64 pixels in the resource folder `:/corvane/images`. They are
/// drawn to be legible from 16 pixels up, on light and on dark ground.
class CORVANE_EXPORT SCLIconProvider : public QObject
{
public:
    /// The kinds of icons. Any other value may be used with RegisterSclIcon() for kinds of the
    /// host's own.
    enum SclIconType : int {
        SclIconScl,         ///< `scl_scl.png`
        SclIconFolder,      ///< `scl_folder.png`
        SclIconNetwork,     ///< `scl_network.png`
        SclIconGse,         ///< `scl_gse.png`
        SclIconSmv,         ///< `scl_smv.png`
        SclIconIed,         ///< `scl_ied.png`
        SclIconAp,          ///< `scl_ap.png`
        SclIconLd,          ///< `scl_ld.png`
        SclIconLn,          ///< `scl_ln.png`
        SclIconLn0,         ///< No image comes with the library: paints nothing until one is
                            ///< registered.
        SclIconDoi,         ///< `scl_doi.png`
        SclIconSdi,         ///< `scl_sdi.png`
        SclIconDai,         ///< `scl_dai.png`
        SclIconVal,         ///< `scl_val.png`
        SclIconDataset,     ///< `scl_dataset.png`
        SclIconFcda,        ///< `scl_fcda.png`
        SclIconFc,          ///< `scl_fc.png`
        SclIconDo,          ///< `scl_do.png`
        SclIconSdo,         ///< `scl_sdo.png`
        SclIconDa,          ///< `scl_da.png`
        SclIconBda,         ///< `scl_bda.png`
        SclIconLnType,      ///< `scl_lntype.png`
        SclIconDoType,      ///< `scl_dotype.png`
        SclIconDaType,      ///< `scl_datype.png`
        SclIconEnumType,    ///< `scl_enumtype.png`
        SclIconEnumVal,     ///< `scl_enumval.png`
        SclIconSub,         ///< `scl_sub.png`
        SclIconVLevel,      ///< `scl_vlevel.png`
        SclIconBay,         ///< `scl_bay.png`
        SclIconDoubleTrans, ///< `scl_doubletrans.png`, a transformer of two windings
        SclIconTrebleTrans, ///< `scl_trebletrans.png`, a transformer of three windings
        SclIconWinding,     ///< `scl_winding.png`
        SclIconBus,         ///< `scl_bus.png`
        SclIconBreaker,     ///< `scl_breaker.png`
        SclIconSwitch,      ///< `scl_switch.png`, a disconnector
        SclIconCapacitor,   ///< `scl_capacitor.png`
        SclIconEarth,       ///< `scl_earth.png`
        SclIconGenerator,   ///< `scl_generator.png`
        SclIconInfeed,      ///< `scl_infeed.png`
        SclIconReactor,     ///< `scl_reactor.png`
        SclIconTa,          ///< `scl_ta.png`, a current transformer
        SclIconTv,          ///< `scl_tv.png`, a voltage transformer
        SclIconCNode,       ///< `scl_cnode.png`
        SclIconTerminal,    ///< `scl_terminal.png`
    };

    /// Becomes what Instantce() gives, whether or not there was a provider before.
    explicit SCLIconProvider(QObject* parent = nullptr);
    /// Leaves Instantce() as it is: a host that destroys the provider it made last must not call
    /// Instantce() again before it has made another.
    ~SCLIconProvider() override;

    /// The provider that was made last, or null if none was made. Creates nothing.
    static SCLIconProvider* Instantce();

    /// The icon of a kind, as registered last. A null icon for a value outside the enumeration that
    /// was not registered.
    QIcon GetSclIcon(SclIconType type) const;
    /// The icon that comes with the library for elements with this tag, by exact comparison.
    /// RegisterSclIcon() does not change it. `LN0` has the icon of `LN`.
    ///
    /// \return a null icon for all tags but SCL, GSE, SMV, IED, AccessPoint, LDevice, LN, LN0, DOI,
    ///         SDI, DAI, Val, DataSet, FCDA, DO, SDO, DA, BDA, LNodeType, DOType, DAType, EnumType,
    ///         EnumVal and Substation.
    QIcon GetSclIcon(const QString& tag) const;
    /// Replaces the icon of a kind, or adds one for a value outside the enumeration. Icons by tag
    /// do not follow.
    void RegisterSclIcon(SclIconType type, const QIcon& icon);

private:
    Q_DISABLE_COPY(SCLIconProvider)

    struct Icons;
    std::unique_ptr<Icons> m_pIcons;

    static SCLIconProvider* m_pInstance;
};

} // namespace Corvane
