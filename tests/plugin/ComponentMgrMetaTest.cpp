// The manager's meta-object, which QML and string-based connections use.
#include "plugin/ComponentMgr.h"
#include "tests/support/Printing.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Method
{
    QMetaMethod::MethodType type;
    const char* result;
    const char* signature;
    QList<QByteArray> names;
};

TEST(ComponentMgrMeta, Methods_HaveFixedIndexes)
{
    const auto signal = QMetaMethod::Signal;
    const auto invokable = QMetaMethod::Method;
    const std::vector<Method> expected{
        {signal, "void", "sigNewComponent(QString,QString)", {"name", "parent"}},
        {signal, "void", "sigNewComponent(QString)", {"name"}},
        {signal, "void", "sigNewComponent()", {}},
        {signal, "void", "sigComponentsChanged()", {}},
        {invokable, "void", "loadComponents(QStringList)", {"list"}},
        {invokable, "void", "loadComponents(QString)", {"componentName"}},
        {invokable, "void", "loadComponents()", {}},
        {invokable, "QObject*", "component(QString)", {"name"}},
        {invokable, "QObject*", "loadComponent(QString,QString)", {"name", "parentCom"}},
        {invokable, "QObject*", "loadComponent(QString)", {"name"}},
    };
    const QMetaObject& meta = CComponentMgr::staticMetaObject;
    EXPECT_STREQ(meta.className(), "CComponentMgr");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), int(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + int(i));
        EXPECT_EQ(method.methodType(), expected[i].type) << i;
        EXPECT_STREQ(method.typeName(), expected[i].result) << i;
        EXPECT_EQ(method.methodSignature(), expected[i].signature) << i;
        EXPECT_EQ(method.parameterNames(), expected[i].names) << i;
        EXPECT_EQ(method.access(), QMetaMethod::Public) << i;
    }
}

TEST(ComponentMgrMeta, Components_IsTheOnlyPropertyAndIsReadOnlyWithANotifySignal)
{
    const QMetaObject& meta = CComponentMgr::staticMetaObject;
    ASSERT_EQ(meta.propertyCount() - meta.propertyOffset(), 1);
    const QMetaProperty property = meta.property(meta.propertyOffset());
    EXPECT_STREQ(property.name(), "components");
    EXPECT_STREQ(property.typeName(), "QVariantList");
    EXPECT_TRUE(property.isReadable());
    EXPECT_FALSE(property.isWritable());
    EXPECT_FALSE(property.isResettable());
    EXPECT_EQ(property.notifySignal().methodSignature(), "sigComponentsChanged()");
    EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
    EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
}

} // namespace
