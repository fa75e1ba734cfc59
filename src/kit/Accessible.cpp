#include "kit/Accessible.h"

#include "kit/CadreDesign.h"
#include "kit/MyProgressBar.h"
#include "kit/Splitter.h"
#include "kit/SplitterBar.h"
#include "kit/Twips.h"

#include <QAccessibleWidget>
#include <QToolBar>
#include <QToolButton>

namespace Sonmira {

namespace {

// A control with a value between two others.
class AccessibleValue : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    using QAccessibleWidget::QAccessibleWidget;

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
};

class AccessibleProgress final : public AccessibleValue {
public:
    explicit AccessibleProgress(MyProgressBar& bar)
        : AccessibleValue(&bar, QAccessible::ProgressBar), Bar(bar) {}

    QVariant currentValue() const override { return Bar.Value(); }
    void setCurrentValue(const QVariant&) override {}  // it tells, it is not asked
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 100; }
    QVariant minimumStepSize() const override { return 1; }

private:
    MyProgressBar& Bar;
};

}  // namespace

// In logical pixels, as everything that these tools see.
class AccessibleSplitterBar final : public AccessibleValue {
public:
    explicit AccessibleSplitterBar(SplitterBar& bar)
        : AccessibleValue(&bar, QAccessible::Splitter), Owner(bar.Owner) {}

    QVariant currentValue() const override { return ToPixels(Owner.Position); }
    void setCurrentValue(const QVariant& value) override {
        Owner.Step(value.toInt() - ToPixels(Owner.Position));
    }
    QVariant minimumValue() const override { return ToPixels(Owner.Geometry.Clamp(Owner.Length(), 0)); }
    QVariant maximumValue() const override {
        return ToPixels(Owner.Geometry.Clamp(Owner.Length(), Owner.Length()));
    }
    QVariant minimumStepSize() const override { return 1; }

private:
    Splitter& Owner;
};

namespace {

QAccessibleInterface* Describe(const QString& /*className*/, QObject* object) {
    if (auto* const bar = qobject_cast<MyProgressBar*>(object)) return new AccessibleProgress(*bar);
    if (auto* const bar = qobject_cast<SplitterBar*>(object)) return new AccessibleSplitterBar(*bar);
    const bool isContainer =
        qobject_cast<CadreDesign*>(object) != nullptr || qobject_cast<Splitter*>(object) != nullptr;
    return isContainer ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Grouping)
                       : nullptr;
}

}  // namespace

void InstallKitAccessibility() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(Describe);
        return true;
    }();
    static_cast<void>(isInstalled);
}

void NameExtensionOf(const QToolBar& bar) {
    bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))
        ->setAccessibleName(QStringLiteral("More commands"));
}

}  // namespace Sonmira
