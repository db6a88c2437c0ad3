#include "KivCore/UserInterface.h"

namespace KivSystem {

KivUserInterface::KivUserInterface() = default;

KivUserInterface::~KivUserInterface() = default;

} // namespace KivSystem
