// SPDX-License-Identifier: Apache-2.0
#include "TypeCatalog.h"

#include "Lists.h"
#include "XmlOutput.h"

#include <QList>

#include <algorithm>
#include <cstring>

namespace Corvane::Bench
{

namespace
{

using I = Instance;

const std::vector<EnumEntry>& Enumerations()
{
    static const std::vector<EnumEntry> entries{
        {"Beh", 1, "on blocked test test/blocked off"},
        {"Health", 1, "Ok Warning Alarm"},
        {"CtlModel", 0,
         "status-only direct-with-normal-security sbo-with-normal-security "
         "direct-with-enhanced-security sbo-with-enhanced-security"},
        {"SboClass", 0, "operate-once operate-many"},
        {"Dir", 0, "unknown forward backward both"},
        {"DirMod", 1, "NonDirectional Forward Reverse"},
        {"Range", 0, "normal high low high-high low-low"},
        {"OrCat", 0,
         "not-supported bay-control station-control remote-control automatic-bay "
         "automatic-station automatic-remote maintenance process"},
        {"CmdQual", 0, "pulse persistent"},
        {"AutoRecSt", 1, "Ready InProgress Successful"},
        {"SeqT", 0, "pos-neg-zero dir-quad-zero"},
        {"Multiplier", -3, "m c d none da h k"},
        {"SIUnit", 1, "none m kg s A K mol cd"},
    };
    return entries;
}

MemberEntry Status(const char* bType, const char* type = nullptr, I instance = I::Address)
{
    return {"stVal", "ST", bType, type, instance};
}

std::vector<MemberEntry> WithTexts(std::vector<MemberEntry> members)
{
    members.push_back({"d", "DC", "VisString255", nullptr, I::None});
    members.push_back({"dU", "DC", "Unicode255", nullptr, I::Description});
    return members;
}

std::vector<MemberEntry> WithTime(std::vector<MemberEntry> members, const char* fc)
{
    members.push_back({"q", fc, "Quality", nullptr, I::Address});
    members.push_back({"t", fc, "Timestamp", nullptr, I::None});
    return WithTexts(members);
}

std::vector<MemberEntry> Commands(const char* type)
{
    return {{"SBOw", "CO", "Struct", type, I::None},
            {"Oper", "CO", "Struct", type, I::Nested},
            {"Cancel", "CO", "Struct", type, I::None}};
}

std::vector<MemberEntry> ControlModel()
{
    return {{"ctlModel", "CF", "Enum", "CtlModel", I::Word},
            {"sboTimeout", "CF", "INT32U", nullptr, I::Integer},
            {"sboClass", "CF", "Enum", "SboClass", I::None}};
}

std::vector<MemberEntry> Setting(MemberEntry value)
{
    return WithTexts({value,
                      {"units", "CF", "Struct", "Unit", I::Nested},
                      {"minVal", "CF", "Struct", "AnalogueValue_f", I::Nested},
                      {"maxVal", "CF", "Struct", "AnalogueValue_f", I::Nested},
                      {"stepSize", "CF", "Struct", "AnalogueValue_f", I::Nested}});
}

std::vector<MemberEntry> Measured(MemberEntry instantaneous, MemberEntry deadbanded)
{
    return WithTime({instantaneous,
                     deadbanded,
                     {"range", "MX", "Enum", "Range", I::None},
                     {"units", "CF", "Struct", "Unit", I::Nested},
                     {"db", "CF", "INT32U", nullptr, I::Integer},
                     {"zeroDb", "CF", "INT32U", nullptr, I::Integer},
                     {"rangeC", "CF", "Struct", "RangeConfig", I::Nested}},
                    "MX");
}

MemberEntry SubObject(const char* name, const char* type)
{
    return {name, nullptr, nullptr, type, I::Nested};
}

const std::vector<StructureEntry>& ObjectTypes()
{
    static const std::vector<StructureEntry> entries{
        {"SPS", "SPS", WithTime({Status("BOOLEAN")}, "ST")},
        {"DPS", "DPS", WithTime({Status("Dbpos")}, "ST")},
        {"INS", "INS", WithTime({Status("INT32")}, "ST")},
        {"ENS_Beh", "ENS", WithTime({Status("Enum", "Beh", I::None)}, "ST")},
        {"ENS_Health", "ENS", WithTime({Status("Enum", "Health", I::Word)}, "ST")},
        {"ENS_AutoRecSt", "ENS", WithTime({Status("Enum", "AutoRecSt")}, "ST")},
        {"ACT", "ACT",
         WithTime({{"general", "ST", "BOOLEAN", nullptr, I::Address},
                   {"phsA", "ST", "BOOLEAN", nullptr, I::Address},
                   {"phsB", "ST", "BOOLEAN", nullptr, I::Address},
                   {"phsC", "ST", "BOOLEAN", nullptr, I::Address}},
                  "ST")},
        {"ACD", "ACD",
         WithTime({{"general", "ST", "BOOLEAN", nullptr, I::Address},
                   {"dirGeneral", "ST", "Enum", "Dir", I::Word},
                   {"phsA", "ST", "BOOLEAN", nullptr, I::Address},
                   {"phsB", "ST", "BOOLEAN", nullptr, I::Address},
                   {"phsC", "ST", "BOOLEAN", nullptr, I::Address}},
                  "ST")},
        {"BCR", "BCR",
         WithTime({{"actVal", "ST", "INT64", nullptr, I::Address},
                   {"frVal", "ST", "INT64", nullptr, I::None},
                   {"frTm", "ST", "Timestamp", nullptr, I::None},
                   {"units", "CF", "Struct", "Unit", I::Nested},
                   {"pulsQty", "CF", "FLOAT32", nullptr, I::Decimal},
                   {"frEna", "CF", "BOOLEAN", nullptr, I::Boolean}},
                  "ST")},
        {"SPC", "SPC",
         Concatenated(
             {Commands("Oper_BOOLEAN"), WithTime({Status("BOOLEAN")}, "ST"), ControlModel()})},
        {"DPC", "DPC",
         Concatenated({Commands("Oper_BOOLEAN"),
                       WithTime({Status("Dbpos")}, "ST"),
                       {{"pulseConfig", "CF", "Struct", "PulseConfig", I::Nested}},
                       ControlModel()})},
        {"ENC_Mod", "ENC",
         Concatenated({Commands("Oper_Beh"), WithTime({Status("Enum", "Beh", I::None)}, "ST"),
                       ControlModel()})},
        {"MV", "MV",
         Measured({"instMag", "MX", "Struct", "AnalogueValue_f", I::None},
                  {"mag", "MX", "Struct", "AnalogueValue_f", I::Nested})},
        {"CMV", "CMV",
         Measured({"instCVal", "MX", "Struct", "Vector", I::None},
                  {"cVal", "MX", "Struct", "Vector", I::Nested})},
        {"SAV", "SAV",
         WithTime({{"instMag", "MX", "Struct", "AnalogueValue_i", I::Nested},
                   {"units", "CF", "Struct", "Unit", I::Nested},
                   {"sVC", "CF", "Struct", "ScaledValueConfig", I::Nested}},
                  "MX")},
        {"SEQ", "SEQ",
         WithTexts({SubObject("c1", "CMV"),
                    SubObject("c2", "CMV"),
                    SubObject("c3", "CMV"),
                    {"seqT", "MX", "Enum", "SeqT", I::Word}})},
        {"DEL", "DEL",
         WithTexts(
             {SubObject("phsAB", "CMV"), SubObject("phsBC", "CMV"), SubObject("phsCA", "CMV")})},
        {"WYE", "WYE",
         WithTexts({SubObject("phsA", "CMV"), SubObject("phsB", "CMV"), SubObject("phsC", "CMV"),
                    SubObject("neut", "CMV")})},
        {"WYE_seq", "WYE",
         WithTexts({SubObject("phsA", "CMV"), SubObject("phsB", "CMV"), SubObject("phsC", "CMV"),
                    SubObject("seq", "SEQ")})},
        {"SPG", "SPG", WithTexts({{"setVal", "SP", "BOOLEAN", nullptr, I::Boolean}})},
        {"ING", "ING", Setting({"setVal", "SG", "INT32", nullptr, I::Integer})},
        {"ASG", "ASG", Setting({"setMag", "SG", "Struct", "AnalogueValue_f", I::Nested})},
        {"ENG_DirMod", "ENG", WithTexts({{"setVal", "SG", "Enum", "DirMod", I::Word}})},
        {"LPL", "LPL",
         WithTexts({{"vendor", "DC", "VisString255", nullptr, I::Text},
                    {"swRev", "DC", "VisString255", nullptr, I::Text},
                    {"configRev", "DC", "VisString255", nullptr, I::Text}})},
        {"DPL",
         "DPL",
         {{"vendor", "DC", "VisString255", nullptr, I::Text},
          {"hwRev", "DC", "VisString255", nullptr, I::Text},
          {"serNum", "DC", "VisString255", nullptr, I::Text},
          {"model", "DC", "VisString255", nullptr, I::Text}}},
    };
    return entries;
}

MemberEntry Part(const char* name, const char* bType, I instance)
{
    return {name, nullptr, bType, nullptr, instance};
}

MemberEntry Part(const char* name, const char* bType, const char* type, I instance)
{
    return {name, nullptr, bType, type, instance};
}

StructureEntry Operation(const char* id, const char* bType, const char* type)
{
    return {id,
            nullptr,
            {Part("ctlVal", bType, type, I::Address), Part("operTm", "Timestamp", I::None),
             Part("origin", "Struct", "Originator", I::Nested), Part("ctlNum", "INT8U", I::None),
             Part("T", "Timestamp", I::None), Part("Test", "BOOLEAN", I::None),
             Part("Check", "Check", I::None)}};
}

const std::vector<StructureEntry>& AttributeTypes()
{
    static const std::vector<StructureEntry> entries{
        {"AnalogueValue_f", nullptr, {Part("f", "FLOAT32", I::Decimal)}},
        {"AnalogueValue_i", nullptr, {Part("i", "INT32", I::Address)}},
        {"Vector",
         nullptr,
         {Part("mag", "Struct", "AnalogueValue_f", I::Nested),
          Part("ang", "Struct", "AnalogueValue_f", I::Nested)}},
        {"Unit",
         nullptr,
         {Part("SIUnit", "Enum", "SIUnit", I::Word),
          Part("multiplier", "Enum", "Multiplier", I::Word)}},
        {"RangeConfig",
         nullptr,
         {Part("hhLim", "Struct", "AnalogueValue_f", I::Nested),
          Part("hLim", "Struct", "AnalogueValue_f", I::Nested),
          Part("lLim", "Struct", "AnalogueValue_f", I::None),
          Part("llLim", "Struct", "AnalogueValue_f", I::None),
          Part("min", "Struct", "AnalogueValue_f", I::None),
          Part("max", "Struct", "AnalogueValue_f", I::None)}},
        {"ScaledValueConfig",
         nullptr,
         {Part("scaleFactor", "FLOAT32", I::Decimal), Part("offset", "FLOAT32", I::Decimal)}},
        {"Originator",
         nullptr,
         {Part("orCat", "Enum", "OrCat", I::Word), Part("orIdent", "Octet64", I::None)}},
        {"PulseConfig",
         nullptr,
         {Part("cmdQual", "Enum", "CmdQual", I::Word), Part("onDur", "INT32U", I::Integer),
          Part("offDur", "INT32U", I::Integer), Part("numPls", "INT32U", I::Integer)}},
        Operation("Oper_BOOLEAN", "BOOLEAN", nullptr),
        Operation("Oper_Beh", "Enum", "Beh"),
    };
    return entries;
}

std::vector<DataObjectEntry> Common(const std::vector<DataObjectEntry>& objects)
{
    return Concatenated({{{"Mod", "ENC_Mod", "模式", 0, false},
                          {"Beh", "ENS_Beh", "行为", 0, false},
                          {"Health", "ENS_Health", "健康状态", 0, false},
                          {"NamPlt", "LPL", "铭牌", 0, false}},
                         objects});
}

const std::vector<NodeEntry>& NodeTypes()
{
    static const std::vector<NodeEntry> entries{
        {"LLN0", "LLN0",
         Common({{"Loc", "SPS", "就地位置", 0, false},
                 {"LEDRs", "SPC", "复归信号灯", 0, true},
                 {"FuncEna", "SPC", "功能软压板", 4, false}})},
        {"LLN0_SV", "LLN0", Common({{"DelayTRtg", "SAV", "额定延时", 0, false}})},
        {"LPHD",
         "LPHD",
         {{"PhyNam", "DPL", "物理装置铭牌", 0, false},
          {"PhyHealth", "ENS_Health", "物理装置健康", 0, false},
          {"Proxy", "SPS", "Proxy", 0, false},
          {"PwrSupAlm", "SPS", "电源告警", 0, true}}},
        {"IHMI", "IHMI", Common({})},
        {"PTRC", "PTRC",
         Common({{"Tr", "ACT", "跳闸", 0, false},
                 {"Op", "ACT", "动作", 0, true},
                 {"Str", "ACD", "启动", 0, false},
                 {"TrPlsTmms", "ING", "Trip pulse time", 0, true}})},
        {"PDIS", "PDIS",
         Common({{"Str", "ACD", "距离启动", 0, false},
                 {"Op", "ACT", "距离动作", 0, false},
                 {"PoRch", "ASG", "相间距离定值", 0, false},
                 {"PctRch", "ASG", "Percent reach", 0, false},
                 {"GndStr", "ASG", "接地距离定值", 0, true},
                 {"PhDlTmms", "ING", "相间延时", 0, false},
                 {"GndDlTmms", "ING", "接地延时", 0, false},
                 {"X1", "ASG", "正序电抗", 0, false},
                 {"LinAng", "ASG", "线路正序灵敏角", 0, false},
                 {"DirMod", "ENG_DirMod", "方向", 0, false}})},
        {"PDIF", "PDIF",
         Common({{"Op", "ACT", "差动动作", 0, false},
                 {"LoSet", "ASG", "差动低定值", 0, false},
                 {"HiSet", "ASG", "差动高定值", 0, false},
                 {"MinOpTmms", "ING", "Minimum operate time", 0, true},
                 {"Enable", "SPG", "差动保护投入", 0, false}})},
        {"PTOC", "PTOC",
         Common({{"Str", "ACD", "过流启动", 0, false},
                 {"Op", "ACT", "过流动作", 0, false},
                 {"StrVal", "ASG", "过流定值", 0, false},
                 {"TmMult", "ASG", "Time multiplier", 0, true},
                 {"OpDlTmms", "ING", "过流延时", 0, false},
                 {"RsDlTmms", "ING", "返回延时", 0, false},
                 {"DirMod", "ENG_DirMod", "方向", 0, false},
                 {"Enable", "SPG", "过流保护投入", 0, false}})},
        {"RREC", "RREC",
         Common({{"Op", "ACT", "重合闸动作", 0, false},
                 {"AutoRecSt", "ENS_AutoRecSt", "重合闸状态", 0, false},
                 {"Rec1Tmms", "ING", "重合闸时间", 0, false},
                 {"BlkRec", "SPC", "闭锁重合闸", 0, false}})},
        {"RBRF", "RBRF",
         Common({{"Str", "ACD", "失灵启动", 0, false},
                 {"OpEx", "ACT", "失灵跳闸", 0, false},
                 {"FailTmms", "ING", "失灵延时", 0, false},
                 {"DetValA", "ASG", "失灵电流定值", 0, false}})},
        {"RDRE", "RDRE",
         Common({{"RcdMade", "SPS", "录波完成", 0, false},
                 {"FltNum", "INS", "故障序号", 0, false},
                 {"RcdStr", "SPS", "录波启动", 0, true},
                 {"PreTmms", "ING", "Pre-fault time", 0, false}})},
        {"MMXU", "MMXU",
         Common({{"TotW", "MV", "有功功率", 0, false},
                 {"TotVAr", "MV", "无功功率", 0, false},
                 {"TotPF", "MV", "功率因数", 0, false},
                 {"Hz", "MV", "频率", 0, false},
                 {"PPV", "DEL", "线电压", 0, true},
                 {"PhV", "WYE", "相电压", 0, false},
                 {"A", "WYE_seq", "电流", 0, false}})},
        {"MSQI", "MSQI",
         Common({{"SeqA", "SEQ", "电流序分量", 0, false},
                 {"SeqV", "SEQ", "Sequence voltages", 0, false}})},
        {"MMTR", "MMTR",
         Common({{"SupWh", "BCR", "正向有功电度", 0, false},
                 {"DmdWh", "BCR", "反向有功电度", 0, false},
                 {"SupVArh", "BCR", "正向无功电度", 0, false},
                 {"DmdVArh", "BCR", "反向无功电度", 0, true}})},
        {"CSWI", "CSWI",
         Common({{"Pos", "DPC", "遥控位置", 0, false},
                 {"OpOpn", "ACT", "分闸出口", 0, false},
                 {"OpCls", "ACT", "合闸出口", 0, false},
                 {"LocSta", "SPC", "站控权限", 0, true}})},
        {"CILO", "CILO",
         Common(
             {{"EnaOpn", "SPS", "允许分闸", 0, false}, {"EnaCls", "SPS", "允许合闸", 0, false}})},
        {"XCBR", "XCBR",
         Common({{"Pos", "DPC", "断路器位置", 0, false},
                 {"BlkOpn", "SPC", "闭锁分闸", 0, false},
                 {"BlkCls", "SPC", "闭锁合闸", 0, false},
                 {"OpCnt", "INS", "动作次数", 0, false},
                 {"Loc", "SPS", "就地", 0, false},
                 {"CBOpCap", "INS", "Operating capability", 0, true}})},
        {"XSWI", "XSWI",
         Common({{"Pos", "DPC", "刀闸位置", 0, false},
                 {"BlkOpn", "SPC", "闭锁分闸", 0, false},
                 {"BlkCls", "SPC", "闭锁合闸", 0, false},
                 {"OpCnt", "INS", "动作次数", 0, false},
                 {"Loc", "SPS", "就地", 0, false}})},
        {"TCTR", "TCTR",
         Common({{"AmpSv", "SAV", "电流采样值", 0, false},
                 {"ARtg", "ASG", "额定一次电流", 0, false}})},
        {"TVTR", "TVTR",
         Common({{"VolSv", "SAV", "电压采样值", 0, false},
                 {"VRtg", "ASG", "额定一次电压", 0, false}})},
        {"GGIO_IND", "GGIO", Common({{"Ind", "SPS", "遥信", 32, false}})},
        {"GGIO_ALM", "GGIO", Common({{"Alm", "SPS", "告警", 24, false}})},
        {"GGIO_CTL", "GGIO", Common({{"SPCSO", "SPC", "遥控", 16, false}})},
        {"GGIO_POS", "GGIO", Common({{"DPCSO", "DPC", "双点遥控", 8, false}})},
        {"GGIO_AIN", "GGIO", Common({{"AnIn", "MV", "直流量", 8, false}})},
        {"GGIO_GOIN", "GGIO",
         Common({{"Ind", "SPS", "GOOSE 开入", 16, false},
                 {"DPCSO", "DPS", "GOOSE 双位置开入", 16, false}})},
        {"GGIO_SVIN", "GGIO",
         Common({{"AnIn", "SAV", "SV 输入", 16, false},
                 {"DelayTRtg", "SAV", "SV 额定延时", 0, false}})},
    };
    return entries;
}

template <typename Entry>
const Entry& Find(const std::vector<Entry>& entries, const char* id)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [id](const Entry& entry) {
        return std::strcmp(entry.id, id) == 0;
    });
    Q_ASSERT(found != entries.end());
    return *found;
}

void WriteNodeType(XmlOutput& out, const NodeEntry& node, int series)
{
    const XmlScope scope(
        out, "LNodeType",
        {{"id", TypeCatalog::NodeTypeId(node, series)}, {"lnClass", node.lnClass}});
    for (const DataObjectEntry& object : node.objects) {
        if (object.optional && series > 0) {
            continue;
        }
        for (int number = 1; number <= std::max(object.count, 1); ++number) {
            out.Empty("DO",
                      {{"name", TypeCatalog::ObjectName(object, number)}, {"type", object.type}});
        }
    }
}

QByteArray YesIf(bool condition)
{
    return condition ? QByteArray("true") : QByteArray();
}

void WriteAttribute(XmlOutput& out, const char* tag, const MemberEntry& member)
{
    const bool reported =
        member.fc && (std::strcmp(member.fc, "ST") == 0 || std::strcmp(member.fc, "MX") == 0);
    const bool quality = std::strcmp(member.bType, "Quality") == 0;
    const bool time = std::strcmp(member.bType, "Timestamp") == 0;
    out.Empty(tag, {{"name", member.name},
                    {"bType", member.bType},
                    {"type", member.type},
                    {"dchg", YesIf(reported && !quality && !time)},
                    {"qchg", YesIf(reported && quality)},
                    {"fc", member.fc}});
}

void WriteStructure(XmlOutput& out, const StructureEntry& structure)
{
    const XmlScope scope(out, structure.cdc ? "DOType" : "DAType",
                         {{"id", structure.id}, {"cdc", structure.cdc}});
    for (const MemberEntry& member : structure.members) {
        if (!member.bType) {
            out.Empty("SDO", {{"name", member.name}, {"type", member.type}});
        } else {
            WriteAttribute(out, structure.cdc ? "DA" : "BDA", member);
        }
    }
}

void WriteEnumeration(XmlOutput& out, const EnumEntry& enumeration)
{
    const XmlScope scope(out, "EnumType", {{"id", enumeration.id}});
    int ordinal = enumeration.first;
    for (const QByteArray& value : QByteArray(enumeration.values).split(' ')) {
        out.Text("EnumVal", {{"ord", QByteArray::number(ordinal)}}, value);
        ++ordinal;
    }
}

} // namespace

QByteArray TypeCatalog::NodeTypeId(const NodeEntry& node, int series)
{
    return QByteArray(node.id) + (series > 0 ? "_B" : "_A");
}

const NodeEntry& TypeCatalog::Node(const char* id)
{
    return Find(NodeTypes(), id);
}

const StructureEntry& TypeCatalog::Structure(const char* id)
{
    const auto& attributeTypes = AttributeTypes();
    for (const StructureEntry& entry : attributeTypes) {
        if (std::strcmp(entry.id, id) == 0) {
            return entry;
        }
    }
    return Find(ObjectTypes(), id);
}

const EnumEntry& TypeCatalog::Enumeration(const char* id)
{
    return Find(Enumerations(), id);
}

QByteArray TypeCatalog::ObjectName(const DataObjectEntry& object, int number)
{
    QByteArray name(object.name);
    return object.count > 0 ? name + QByteArray::number(number) : name;
}

void TypeCatalog::Write(XmlOutput& out)
{
    const XmlScope scope(out, "DataTypeTemplates");
    for (const NodeEntry& node : NodeTypes()) {
        for (int series = 0; series < g_nSeriesCount; ++series) {
            WriteNodeType(out, node, series);
        }
    }
    for (const StructureEntry& structure : ObjectTypes()) {
        WriteStructure(out, structure);
    }
    for (const StructureEntry& structure : AttributeTypes()) {
        WriteStructure(out, structure);
    }
    for (const EnumEntry& enumeration : Enumerations()) {
        WriteEnumeration(out, enumeration);
    }
}

} // namespace Corvane::Bench
