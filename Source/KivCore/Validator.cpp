#include "KivCore/Validator.h"

namespace KivSystem {

KivValidatorBase::KivValidatorBase(
    bool acceptsEmpty, double lowest, double highest, QObject *parent)
    : QValidator(parent)
    , m_acceptsEmpty(acceptsEmpty)
    , m_lowest(lowest)
    , m_highest(highest)
{}

KivValidatorBase::~KivValidatorBase() = default;

} // namespace KivSystem
