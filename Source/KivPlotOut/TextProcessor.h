// TextProcessor: a marker as a delimited text, one line per record, the fields in the order of a
// list. What a record is follows from the fields: the marker, a style, a fabric, a layer, a style
// on a fabric in a layer, or a size. Style, fabric and size with the separator ";":
//
//     Shirt;Denim;S
//     Shirt;"Denim; blue";S

#ifndef KIVPLOTOUT_TEXTPROCESSOR_H
#define KIVPLOTOUT_TEXTPROCESSOR_H

class QIODevice;

namespace KivSystem {

class DocumentMak;
class TextIndexList;
class TextProcessorOptions;

class TextProcessor
{
public:
    TextProcessor() = delete;

    /// Writes the whole file into the open device, which it switches to text mode, in the local
    /// encoding; lengths are in the user's units. An empty list gives a single line end. Throws
    /// AssertionError; what was written before stays in the device.
    static void exportDocument(const DocumentMak &doc, QIODevice *device, const TextIndexList &list,
        const TextProcessorOptions &options);
};

} // namespace KivSystem

#endif
