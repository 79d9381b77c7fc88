#include "hostcheck/HostIndex.h"

namespace hostcheck {

const std::vector<Object>& hostIndex()
{
    static const std::vector<Object> index = {
        {Way::ContextProperty,
         "partitionmanager",
         {{Kind::Method, "bool", "doFunFromAI(int,QVariantMap)"},
          {Kind::Method, "bool", "isWin11CheckerEnable()"},
          {Kind::Method, "bool", "hasDiskSmartInfoError(int)"}}},
        {Way::ContextProperty, "toolbox", {{Kind::Method, "bool", "check4kAlign(QVariant)"}}},
        {Way::ContextProperty,
         "partitionrecovery",
         {{Kind::Method, "bool", "isDiskIndexValid(QVariant)"},
          {Kind::Method, "bool", "isRawPart(QVariant)"}}},
        {Way::ContextProperty, "bootablemedia", {{Kind::Method, "bool", "isAlreadyEnable()"}}},
        {Way::ContextProperty,
         "deviceMgr",
         {{Kind::Method, "QVariantList", "disks(int,bool)"},
          {Kind::Method, "QVariantList", "bootDisks(int,bool)"}}},
        {Way::ContextProperty,
         "clone",
         {{Kind::Property, "int", "cloneType", true},
          {Kind::Method, "QString", "invalidInfo(QVariantMap,QVariantMap,int,QVariantMap)"}}},
        {Way::ContextProperty,
         "diskconverter",
         {{Kind::Method, "bool", "isFunValid(int,QVariantMap)"},
          {Kind::Method, "QString", "isGPT2MBRValid(QVariantMap)"},
          {Kind::Method, "QString", "isMBR2GPTValid(QVariantMap)"}}},
        {Way::ContextProperty, "multilanguage", {{Kind::Signal, "", "sigCurrentLanguageChanged()"}}},
        {Way::RootChild,
         "__zormain",
         {{Kind::Property, "bool", "busy"},
          {Kind::Method, "", "doprfunction(QVariant)"},
          {Kind::Method, "QVariant", "createBootMediaEnabled(QVariant)"},
          {Kind::Method, "", "dobmfunction(QVariant)"},
          {Kind::Method, "", "opendiskhealth(QVariant)"},
          {Kind::Method, "QVariant", "passwordResetEnabled()"},
          {Kind::Method, "QVariant", "bootrepairEnabled()"},
          {Kind::Method, "QVariant", "doToolBox(QVariant,QVariant)"}}},
        {Way::WindowChild,
         "__qml_executer",
         {{Kind::Method, "QVariant", "sendUserInfo(QVariant,QVariant,QVariant,QVariant)"}}},
        {Way::Window,
         "window",
         {{Kind::Method, "QVariant", "closeGuide(QVariant)"},
          {Kind::Property, "bool", "popuped"},
          {Kind::Method, "QVariant", "openUrl(QVariant)"}}},
    };
    return index;
}

} // namespace hostcheck
