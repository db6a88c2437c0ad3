/// The plot options of a marker: which elements of it are drawn.
///
/// MarkerPlotOptions is the plain record; CDbMarkerOptions hands it out option by option.

#ifndef KIVMARKER_MARKEROPTIONS_H
#define KIVMARKER_MARKEROPTIONS_H

namespace KivSystem {

struct MarkerPlotOptions
{
    // What the information of a placed piece tells. What tells the pieces of a pile apart stands
    // there by default; codes, texts and quantities are for those who ask for them.
    bool pieceTrait = true; ///< the line of marks: fold, block, scale, cut down
    bool pieceName = true;
    bool pieceCode = false;
    bool pieceCodeReference = false;
    bool pieceIdentification = false;
    bool description = false;
    bool styleName = true;
    bool pattern = false;
    bool ballot = true;
    bool taille = true;    ///< size
    bool tissus = false;   ///< fabric
    bool quantite = false; ///< quantity, with "Single" or "Paired"
    bool special = false;  ///< the piece's special name

    bool sewingLine = false;
    bool textInBottom = false; ///< layer labels stand below the fabric, not above it
    float spaceLayers = 0;     ///< cm between the layers of a fabric, laid side by side
};

class CDbMarkerOptions
{
public:
    /// What holds for every marker; used on the main thread.
    static CDbMarkerOptions mDefaultOptions;

    /// All options at once: what the host stores.
    const MarkerPlotOptions &values() const { return m_values; }
    void setValues(const MarkerPlotOptions &values) { m_values = values; }

    // The members of MarkerPlotOptions tell what each means.
    bool pieceTrait() const { return m_values.pieceTrait; }
    bool pieceName() const { return m_values.pieceName; }
    bool pieceCode() const { return m_values.pieceCode; }
    bool pieceCodeReference() const { return m_values.pieceCodeReference; }
    bool pieceIdentification() const { return m_values.pieceIdentification; }
    bool description() const { return m_values.description; }
    bool styleName() const { return m_values.styleName; }
    bool pattern() const { return m_values.pattern; }
    bool ballot() const { return m_values.ballot; }
    bool taille() const { return m_values.taille; }
    bool tissus() const { return m_values.tissus; }
    bool quantite() const { return m_values.quantite; }
    bool special() const { return m_values.special; }
    bool sewingLine() const { return m_values.sewingLine; }
    bool textInBottom() const { return m_values.textInBottom; }
    float spaceLayers() const { return m_values.spaceLayers; } ///< cm

private:
    MarkerPlotOptions m_values;
};

} // namespace KivSystem

#endif
