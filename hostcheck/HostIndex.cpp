#include "hostcheck/HostIndex.h"

namespace hostcheck {

namespace {

// Effects of a member that are the same in both cases.
constexpr Effects always(const char* effect)
{
    return {effect, effect};
}

constexpr Effects kPageRefuses = always("Every tool of the partition page answers \"Task NotValid\".");
constexpr Effects kNoUpgrade =
    always("Windows11UpgradeCheck answers \"Task NotValid\"; the scan's first case never applies.");
constexpr Effects kNoHealthCase = always("The scan's disk health case never applies.");
constexpr Effects kAligned = always("not4kAligned stays false for every disk.");
constexpr Effects kNoRecovery = always("RecoverLostPartition answers \"Task NotValid\" to an agent.");
constexpr Effects kNotRaw = always("isRawPartition stays false for every partition.");
constexpr Effects kNotEnabled = always(
    "The pre-OS environment is treated as not enabled: InstallAndEnablePreOS continues, DisablePreOS answers "
    "\"Task NotValid\".");
constexpr Effects kNoDisks = always(
    "The host's disk list is treated as empty: CloneDiskToDisk answers \"It seems that disk%1 is not "
    "exist\", "
    "CloneOSDataFromDisk \"It seems that disk%1 is not os disk\"; the other clone tools open the guide at "
    "page 1; conversion and toolbox tools send records with diskIndex and driveLetter only.");
constexpr Effects kNoBootDisk = always("The boot disk is treated as unknown: the scan's first case "
                                       "recommends a conversion to GPT, and an answer "
                                       "of the host's own Windows 11 page orders the conversion of disk 0.");
constexpr Effects kCloneType = {"The clone tools answer an empty string and open no guide.",
                                "A value that Qt can convert is written. Otherwise the property keeps its "
                                "value and the clone tools continue: "
                                "\"Task Queued\", and sigCloneResult contains the type."};
constexpr Effects kInvalidInfo = {"The clone tools answer an empty string and open no guide.",
                                  "No objection is found: the clone tools answer \"Task Queued\", and the "
                                  "guide opens at page 3 with an empty "
                                  "errMsg."};
constexpr Effects kNotAsked = always("No effect: no tool calls it.");
constexpr Effects kNotTranslated = always("Components are not translated when the language changes.");
constexpr Effects kNotBusy = {
    "The host is treated as not busy.",
    "A value that Qt can convert to bool is converted. Otherwise the host is treated as not busy."};
constexpr Effects kNotCovered = {
    "The gate assumes that no dialog is open.",
    "A value that Qt can convert to bool is converted. Otherwise the gate assumes that no dialog is open."};
constexpr Effects kRecoveryOrder = {"RecoverLostPartition answers \"Task NotValid\".",
                                    "RecoverLostPartition answers \"Task Queued\", and nothing happens."};
constexpr Effects kHealthOrder = {"DiskHealthCheck answers \"Task NotValid\".",
                                  "DiskHealthCheck answers \"Task Queued\", and nothing happens."};
constexpr Effects kNoMedia =
    always("CreateBootableISO, CreateBootableUsbByDisk and CreateBootableUsbByDriveLetter "
           "answer \"Task NotValid\".");
constexpr Effects kMediaOrder =
    always("The orders of the boot media and pre-OS tools are lost; the answer is still \"Task Queued\".");
constexpr Effects kNoPassword = always("PasswordReset answers \"Task NotValid\".");
constexpr Effects kNoBootRepair = always("RepairWindowsBoot answers \"Task NotValid\".");
constexpr Effects kToolBox = {
    "The toolbox tools answer \"Task NotValid\". If their own question returns true, PasswordReset and "
    "RepairWindowsBoot answer \"Task Queued\", and nothing happens.",
    "All toolbox tools answer \"Task NotValid\", PasswordReset and RepairWindowsBoot included."};
constexpr Effects kNoEvents = always("Events are lost.");
constexpr Effects kGuideStays = always("No guide is closed; the tools continue.");
constexpr Effects kNoAddress = always("No address is opened.");

} // namespace

const std::vector<Object>& hostIndex()
{
    static const std::vector<Object> index = {
        {Way::ContextProperty,
         "partitionmanager",
         {{Kind::Method, "bool", "doFunFromAI(int,QVariantMap)", kPageRefuses},
          {Kind::Method, "bool", "isWin11CheckerEnable()", kNoUpgrade},
          {Kind::Method, "bool", "hasDiskSmartInfoError(int)", kNoHealthCase}}},
        {Way::ContextProperty, "toolbox", {{Kind::Method, "bool", "check4kAlign(QVariant)", kAligned}}},
        {Way::ContextProperty,
         "partitionrecovery",
         {{Kind::Method, "bool", "isDiskIndexValid(QVariant)", kNoRecovery},
          {Kind::Method, "bool", "isRawPart(QVariant)", kNotRaw}}},
        {Way::ContextProperty, "bootablemedia", {{Kind::Method, "bool", "isAlreadyEnable()", kNotEnabled}}},
        {Way::ContextProperty,
         "deviceMgr",
         {{Kind::Method, "QVariantList", "disks(int,bool)", kNoDisks},
          {Kind::Method, "QVariantList", "bootDisks(int,bool)", kNoBootDisk}}},
        {Way::ContextProperty,
         "clone",
         {{Kind::Property, "int", "cloneType", kCloneType, true},
          {Kind::Method, "QString", "invalidInfo(QVariantMap,QVariantMap,int,QVariantMap)", kInvalidInfo}}},
        {Way::ContextProperty,
         "diskconverter",
         {{Kind::Method, "bool", "isFunValid(int,QVariantMap)", kNotAsked},
          {Kind::Method, "QString", "isGPT2MBRValid(QVariantMap)", kNotAsked},
          {Kind::Method, "QString", "isMBR2GPTValid(QVariantMap)", kNotAsked}}},
        {Way::ContextProperty,
         "multilanguage",
         {{Kind::Signal, "", "sigCurrentLanguageChanged()", kNotTranslated}}},
        {Way::RootChild,
         "__zormain",
         {{Kind::Property, "bool", "busy", kNotBusy},
          {Kind::Method, "", "doprfunction(QVariant)", kRecoveryOrder},
          {Kind::Method, "QVariant", "createBootMediaEnabled(QVariant)", kNoMedia},
          {Kind::Method, "", "dobmfunction(QVariant)", kMediaOrder},
          {Kind::Method, "", "opendiskhealth(QVariant)", kHealthOrder},
          {Kind::Method, "QVariant", "passwordResetEnabled()", kNoPassword},
          {Kind::Method, "QVariant", "bootrepairEnabled()", kNoBootRepair},
          {Kind::Method, "QVariant", "doToolBox(QVariant,QVariant)", kToolBox}}},
        {Way::WindowChild,
         "__qml_executer",
         {{Kind::Method, "QVariant", "sendUserInfo(QVariant,QVariant,QVariant,QVariant)", kNoEvents}}},
        {Way::Window,
         "window",
         {{Kind::Method, "QVariant", "closeGuide(QVariant)", kGuideStays},
          {Kind::Property, "bool", "popuped", kNotCovered},
          {Kind::Method, "QVariant", "openUrl(QVariant)", kNoAddress}}},
    };
    return index;
}

} // namespace hostcheck
