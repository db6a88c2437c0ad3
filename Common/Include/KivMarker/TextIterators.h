/// Walks over the texts of a polygon, of a group and of a fabric's layer.
///
///     CDbTextPolyTableIter iterator(textPointers(polygon.polygonTexts));
///     for (CDbTextObject *text = nullptr; iterator.next(&text);) { ... }

#ifndef KIVMARKER_TEXTITERATORS_H
#define KIVMARKER_TEXTITERATORS_H

#include "KivConjoin/ListEx.h"

#include <memory>
#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbTextObject;

/// Any walk over texts. The texts belong to what is walked over, which must not change meanwhile.
class CDbTextObjectIter
{
public:
    CDbTextObjectIter();
    virtual ~CDbTextObjectIter();

    /// Delivers the next text; false at the end, with `*text` null.
    virtual bool next(CDbTextObject **text) = 0;

protected:
    CDbTextObjectIter(const CDbTextObjectIter &) = default;
    CDbTextObjectIter &operator=(const CDbTextObjectIter &) = default;
};

/// A walk over a list of pointers to texts, of which it keeps a copy.
class CDbTexObjectVoidPtrIter : public CDbTextObjectIter
{
public:
    explicit CDbTexObjectVoidPtrIter(const QListEx<void *> &texts);

    void first() { m_position = 0; } ///< goes back to the start
    bool next(CDbTextObject **text) override;

private:
    QListEx<void *> m_texts;
    int m_position = 0;
};

/// The texts of a group.
class CDbTextesGrPolysTableIter : public CDbTexObjectVoidPtrIter
{
public:
    using CDbTexObjectVoidPtrIter::CDbTexObjectVoidPtrIter;
};

/// The texts of a polygon.
class CDbTextPolyTableIter : public CDbTexObjectVoidPtrIter
{
public:
    using CDbTexObjectVoidPtrIter::CDbTexObjectVoidPtrIter;
};

/// The free texts of a fabric's 0-based layer; none past the end.
class CTextLayerTableIter : public CDbTexObjectVoidPtrIter
{
public:
    CTextLayerTableIter(const CDbFabricObject &fabric, short layer);
};

/// What the iterators take of a list that owns its texts.
QListEx<void *> textPointers(const std::vector<std::unique_ptr<CDbTextObject>> &texts);

} // namespace KivSystem

#endif
