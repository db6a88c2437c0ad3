#include "KivConjoin/TraitLine.h"

namespace KivSystem {

void TraitInfo::copyTraitInfo(const TraitInfo &other)
{
    *this = other;
}

LineObject::LineObject() : LineObject(std::make_unique<TraitInfo>()) {}

LineObject::LineObject(std::unique_ptr<TraitInfo> trait)
    : lineTrait(trait.get())
    , m_trait(std::move(trait))
{}

LineObject::~LineObject() = default;

void LineObject::setV1AndV2(CDbPointKIV *first, CDbPointKIV *second)
{
    m_first = first;
    m_second = second;
}

} // namespace KivSystem
