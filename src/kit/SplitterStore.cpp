#include "kit/PropertyStore.h"
#include "kit/Splitter.h"

#include <QMetaEnum>

namespace Sonmira {

namespace {

QString NameOf(Splitter::Property property) {
    const auto names = QMetaEnum::fromType<Splitter::Property>();
    return QString::fromLatin1(names.valueToKey(static_cast<int>(property)));
}

}  // namespace

void Splitter::WriteProperties(PropertyStore& store) const {
    const Stored standard;
    const SplitterGeometry measures;
    // The type of the default is the type in which the property is stored.
    const auto keep = [&store](Property property, const auto& value, const auto& byDefault) {
        store.Write(NameOf(property), QVariant::fromValue(value), QVariant::fromValue(byDefault));
    };
    keep(Property::BorderStyle, BorderStyle(), standard.BorderStyle);
    keep(Property::SplitterAppearance, SplitterAppearance(), standard.SplitterAppearance);
    keep(Property::SplitterBorder, SplitterBorder(), standard.SplitterBorder);
    keep(Property::SplitterColor, SplitterColor(), standard.SplitterColor);
    keep(Property::Orientation, Orientation(), measures.Orientation);
    keep(Property::SplitterSize, SplitterSize(), static_cast<qint16>(measures.SplitterSize));
    keep(Property::Maintain, Maintain(), standard.Maintain);
    keep(Property::SplitterPos, SplitterPos(), static_cast<qint16>(standard.SplitterPos));
    keep(Property::RatioFromTop, RatioFromTop(), standard.RatioFromTop);
    keep(Property::Child1, Child1(), standard.Child1);
    keep(Property::Child2, Child2(), standard.Child2);
    keep(Property::MaxSize, MaxSize(), static_cast<qint16>(measures.MaxSize));
    keep(Property::MaxSizeAppliesTo, MaxSizeAppliesTo(), measures.MaxSizeAppliesTo);
    keep(Property::MinSize1, qint32{MinSize1()}, qint32{measures.MinSize1});
    keep(Property::MinSize2, qint32{MinSize2()}, qint32{measures.MinSize2});
    keep(Property::MinSizeAux, qint32{MinSizeAux()}, qint32{measures.MinSizeAux});
    keep(Property::AllowResize, AllowResize(), standard.AllowResize);
    keep(Property::LiveUpdate, LiveUpdate(), standard.LiveUpdate);
}

void Splitter::ReadProperties(const PropertyStore& store) {
    GiveAll(store, Stored().SplitterPos);
}

void Splitter::GiveAll(const PropertyStore& store, int standardPosition) {
    const Stored standard;
    const SplitterGeometry measures;
    const auto kept = [&store]<class Type>(Property property, const Type& byDefault) {
        return store.Read(NameOf(property), QVariant::fromValue(byDefault)).template value<Type>();
    };
    LayoutEnabled = false;
    SetBorderStyle(kept(Property::BorderStyle, standard.BorderStyle));
    SetSplitterAppearance(kept(Property::SplitterAppearance, standard.SplitterAppearance));
    SetSplitterBorder(kept(Property::SplitterBorder, standard.SplitterBorder));
    SetSplitterColor(kept(Property::SplitterColor, standard.SplitterColor));
    SetOrientation(kept(Property::Orientation, measures.Orientation));
    SetSplitterSize(kept(Property::SplitterSize, measures.SplitterSize));
    SetMaintain(kept(Property::Maintain, standard.Maintain));
    SetSplitterPos(kept(Property::SplitterPos, standardPosition));
    SetRatioFromTop(kept(Property::RatioFromTop, standard.RatioFromTop));
    SetChild1(kept(Property::Child1, standard.Child1));
    SetChild2(kept(Property::Child2, standard.Child2));
    SetMaxSize(kept(Property::MaxSize, measures.MaxSize));
    SetMaxSizeAppliesTo(kept(Property::MaxSizeAppliesTo, measures.MaxSizeAppliesTo));
    SetMinSize1(kept(Property::MinSize1, measures.MinSize1));
    SetMinSize2(kept(Property::MinSize2, measures.MinSize2));
    SetMinSizeAux(kept(Property::MinSizeAux, measures.MinSizeAux));
    SetAllowResize(kept(Property::AllowResize, standard.AllowResize));
    SetLiveUpdate(kept(Property::LiveUpdate, standard.LiveUpdate));
    LayoutEnabled = true;
    LayOut();
}

}  // namespace Sonmira
