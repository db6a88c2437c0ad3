// The entry of the plug-in, the only symbol that the library shows.

#include "MarkerExporterFactory.h"

extern "C" Q_DECL_EXPORT KivSystem::ExporterFactory *markerplugin()
{
    return KivSystem::MarkerExporterFactory::instance();
}
