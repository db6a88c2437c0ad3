/// The fixed punctuation of marker texts.

#ifndef KIVMARKER_SYMBOLS_H
#define KIVMARKER_SYMBOLS_H

namespace KivSystem {

/// Constructing the class gives the symbols; they are the same in every marker.
class CMarkerSymbols
{
public:
    char tabSymbol = '\t';       ///< between the fields of a delimited text
    char quoteSymbol = '"';      ///< around a field that holds the separator
    char instanceSymbol = '$';   ///< before the number of an instance; no piece's name holds it
    char pointOpenSymbol = '(';  ///< before the coordinates of a point
    char pointCloseSymbol = ')'; ///< behind them
    char separatorSymbol = ' ';  ///< between the words of a piece's information
};

} // namespace KivSystem

#endif
