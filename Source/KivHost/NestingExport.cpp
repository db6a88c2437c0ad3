#include "NestingExport.h"

#include "KivMarker/AutoMarkerOptions.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <utility>
#include <vector>

namespace KivSystem {
namespace {

bool groupsWereFused = false;

// The groups in stand-by that the export of the current fabric takes as one shape each, with their
// numbers.
std::vector<std::pair<int, const CDbGrPolysObject *>> groupsToFuse(const CDbMarkerDrawing &drawing)
{
    std::vector<std::pair<int, const CDbGrPolysObject *>> fused;
    short layer = 0;
    drawing.isSetToSingleLayer(nullptr, &layer);
    const CDbFabricObject *fabric =
        drawing.getFabric(static_cast<short>(drawing.currentFabric - 1));
    if (fabric == nullptr || !CAutoMarkerOptions::instance()->markerPiecesInStandby()) {
        return fused;
    }
    CDbGrPolysObjectIter groups(fabric->getPlaceGroupList(t_1_Based(layer)));
    int number = 0;
    for (CDbGrPolysObject *group = nullptr; groups.next(&group);) {
        if (group->groupPlace() == PlacedInStandBy) {
            ++number;
            if (group->hasMultiPolygon()) {
                fused.emplace_back(number, group);
            }
        }
    }
    return fused;
}

} // namespace

QString nestingRemark(const DocumentMak &document)
{
    const CDbMarkerDrawing *drawing = document.drawing();
    if (drawing == nullptr || drawing->getFabricsQty() == 0 ||
        drawing->isSetToSingleLayer(nullptr, nullptr)) {
        return {};
    }
    return QStringLiteral("the marker is not set to a single layer: its nesting file holds the "
                          "frame of the fabric and no pieces");
}

QString findNestingFault(const DocumentMak &document)
{
    if (document.drawing() == nullptr || document.drawing()->getFabricsQty() == 0) {
        return QStringLiteral("the marker holds nothing for it");
    }
    return groupsWereFused ? QStringLiteral("an earlier nesting export of this run fused groups in "
                                            "stand-by; start the program anew for another one")
                           : QString();
}

void noteNestingExport(const DocumentMak &document)
{
    groupsWereFused = groupsWereFused || !groupsToFuse(*document.drawing()).empty();
}

QStringList nestingLosses(const DocumentMak &document)
{
    QStringList sentences;
    for (const auto &[number, group] : groupsToFuse(*document.drawing())) {
        if (group->blockingFusion == nullptr) {
            sentences << QStringLiteral("group %1 in stand-by is not in the nesting file: its "
                                        "pieces do not join to one shape")
                             .arg(number);
        }
    }
    return sentences;
}

} // namespace KivSystem
