// Whatever the bytes are, loading gives a drawing that keeps its rules and reads back from what the
// saver makes of it, or it throws MarkerFileError.

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"

#include "MarkerRules.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace {

void require(bool condition, const char *rule)
{
    if (!condition) {
        std::cerr << rule << std::endl;
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    using namespace KivSystem; // NOLINT(google-build-using-namespace): one short function
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    std::unique_ptr<DocumentMak> document;
    try {
        document = MarkerFile::parse(bytes, QStringLiteral("fuzz.mar"));
    } catch (const MarkerFileError &) {
        return 0;
    }
    require(brokenRule(*document->drawing()).isEmpty(), "the drawing breaks a rule");
    const QByteArray saved = MarkerFile::toBytes(*document);
    const auto again = MarkerFile::parse(saved, QStringLiteral("again.mar"));
    require(MarkerFile::toBytes(*again) == saved, "saving twice gives other bytes");
    return 0;
}
