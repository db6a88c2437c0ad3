#include "KivCore/ExporterFactory.h"

namespace KivSystem {

ExporterFactory::ExporterFactory(QObject *parent) : QObject(parent) {}

ExporterFactory::~ExporterFactory() = default;

} // namespace KivSystem
