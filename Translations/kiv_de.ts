<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CutParametersANSI</name>
    <message>
        <source>Cut Parameters</source>
        <translation>Schneideparameter</translation>
    </message>
    <message>
        <source>Scale in X:</source>
        <translation>Maßstab in X:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Scale in Y:</source>
        <translation>Maßstab in Y:</translation>
    </message>
    <message>
        <source>Reduce Number of Points:</source>
        <translation>Anzahl der Punkte verringern:</translation>
    </message>
    <message>
        <source>Generate Intermediate Points:</source>
        <translation>Zwischenpunkte erzeugen:</translation>
    </message>
    <message>
        <source>Generate Notches Command (M19)</source>
        <translation>Befehl für Knipse erzeugen (M19)</translation>
    </message>
    <message>
        <source>Generate Console Command (M20)</source>
        <translation>Befehl für Konsole erzeugen (M20)</translation>
    </message>
    <message>
        <source>Generate Labels Command (M31)</source>
        <translation>Befehl für Etiketten erzeugen (M31)</translation>
    </message>
    <message>
        <source>Generate Pen Commands for Piece Info</source>
        <translation>Stiftbefehle für Teileinformation erzeugen</translation>
    </message>
    <message>
        <source>Synchronize Pen Up Commands with Cutter</source>
        <translation>Befehle zum Heben des Stifts mit dem Cutter abstimmen</translation>
    </message>
    <message>
        <source>Internal Cut</source>
        <translation>Innenschnitt</translation>
    </message>
    <message>
        <source>Cut Out Internal Lines:</source>
        <translation>Innenlinien schneiden:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Before Outline</source>
        <translation>Vor dem Umriss</translation>
    </message>
    <message>
        <source>After Outline</source>
        <translation>Nach dem Umriss</translation>
    </message>
    <message>
        <source>Notch Cutting Order:</source>
        <translation>Knipse schneiden:</translation>
    </message>
    <message>
        <source>During Outline</source>
        <translation>Während des Umrisses</translation>
    </message>
    <message>
        <source>Special Notch Treatment for Cutting Edge Cutters</source>
        <translation>Knipse für Cutter mit Schneidkante besonders behandeln</translation>
    </message>
    <message>
        <source>Notch Length:</source>
        <translation>Länge der Knipse:</translation>
    </message>
    <message>
        <source>Cut User Punch Holes with a Different Tool (M44)</source>
        <translation>Bohrlöcher des Benutzers mit anderem Werkzeug (M44)</translation>
    </message>
    <message>
        <source>External Cut</source>
        <translation>Außenschnitt</translation>
    </message>
    <message>
        <source>Cut Fabric Edge</source>
        <translation>Stoffkante schneiden</translation>
    </message>
    <message>
        <source>Cut Spacing:</source>
        <translation>Abstand der Schnitte:</translation>
    </message>
    <message>
        <source>Length of Cut:</source>
        <translation>Länge des Schnitts:</translation>
    </message>
    <message>
        <source>Cut External Punch Holes</source>
        <translation>Bohrlöcher außerhalb der Teile bohren</translation>
    </message>
    <message>
        <source>M43 Tool</source>
        <translation>Werkzeug M43</translation>
    </message>
    <message>
        <source>M44 Tool</source>
        <translation>Werkzeug M44</translation>
    </message>
    <message>
        <source>Frame Advance</source>
        <translation>Fenstervorschub</translation>
    </message>
    <message>
        <source>Generate Frame Advance Command (M69)</source>
        <translation>Befehl für Fenstervorschub erzeugen (M69)</translation>
    </message>
    <message>
        <source>Cutter Length in X:</source>
        <translation>Länge des Cutters in X:</translation>
    </message>
    <message>
        <source>Threshold Frame Advance:</source>
        <translation>Schwelle des Fenstervorschubs:</translation>
    </message>
    <message>
        <source>Blocking Options</source>
        <translation>Blockoptionen</translation>
    </message>
    <message>
        <source>Cut Blocks Outline (Single Piece)</source>
        <translation>Umriss von Blöcken schneiden (Einzelteil)</translation>
    </message>
    <message>
        <source>Cut Blocks (Multiple Pieces)</source>
        <translation>Blöcke schneiden (mehrere Teile)</translation>
    </message>
    <message>
        <source>Internal Pieces Only</source>
        <translation>Nur innere Teile</translation>
    </message>
    <message>
        <source>Outline Only</source>
        <translation>Nur Umriss</translation>
    </message>
    <message>
        <source>Generate Individual Cut Files for Blocks (Multiple Pieces)</source>
        <translation>Eigene Schneidedateien für Blöcke erzeugen (mehrere Teile)</translation>
    </message>
    <message>
        <source>Reduce Number of Points</source>
        <translation>Anzahl der Punkte verringern</translation>
    </message>
    <message>
        <source>Generate Intermediate Points</source>
        <translation>Zwischenpunkte erzeugen</translation>
    </message>
</context>
<context>
    <name>CutParametersEastman</name>
    <message>
        <source>Cut Parameters</source>
        <translation>Schneideparameter</translation>
    </message>
    <message>
        <source>Scale in X:</source>
        <translation>Maßstab in X:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Scale in Y:</source>
        <translation>Maßstab in Y:</translation>
    </message>
    <message>
        <source>Notch Cutting Order:</source>
        <translation>Knipse schneiden:</translation>
    </message>
    <message>
        <source>Notch Length:</source>
        <translation>Länge der Knipse:</translation>
    </message>
    <message>
        <source>Drill Type:</source>
        <translation>Bohrart:</translation>
    </message>
    <message>
        <source>Drill Angle:</source>
        <translation>Bohrwinkel:</translation>
    </message>
    <message>
        <source>Cut Blocks Outline (Single Piece)</source>
        <translation>Umriss von Blöcken schneiden (Einzelteil)</translation>
    </message>
    <message>
        <source>Cut Blocks (Multiple Pieces)</source>
        <translation>Blöcke schneiden (mehrere Teile)</translation>
    </message>
    <message>
        <source>Cut Internal Lines</source>
        <translation>Innenlinien schneiden</translation>
    </message>
    <message>
        <source>Generate Individual Cut Files for Blocks (Multiple Pieces)</source>
        <translation>Eigene Schneidedateien für Blöcke erzeugen (mehrere Teile)</translation>
    </message>
</context>
<context>
    <name>DXFNESTERProcessor</name>
    <message>
        <source>Cannot export. One or more piece names are repeating.</source>
        <translation>Der Export ist nicht möglich. Ein oder mehrere Teilenamen kommen mehrfach vor.</translation>
    </message>
</context>
<context>
    <name>IllustratorExportOptions</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Scale:</source>
        <translation>Maßstab:</translation>
    </message>
</context>
<context>
    <name>IllustratorProcessor</name>
    <message>
        <source>Single</source>
        <translation>Einzeln</translation>
    </message>
    <message>
        <source>Paired</source>
        <translation>Paarig</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivApplication</name>
    <message>
        <source>Invalid Operation</source>
        <translation>Ungültiger Vorgang</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivDialog</name>
    <message>
        <source>Enter a value from %1 to %2.</source>
        <translation>Geben Sie einen Wert von %1 bis %2 ein.</translation>
    </message>
    <message>
        <source>%1: enter a value from %2 to %3.</source>
        <translation>%1: Geben Sie einen Wert von %2 bis %3 ein.</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivLocale</name>
    <message>
        <source>cm, mm or in</source>
        <translation>cm, mm oder in</translation>
    </message>
    <message>
        <source>a whole number from 0 to %1</source>
        <translation>eine ganze Zahl von 0 bis %1</translation>
    </message>
    <message>
        <source>The setting %1 has the value &quot;%2&quot;; expected is %3.</source>
        <translation>Die Einstellung %1 hat den Wert „%2“; erwartet wird: %3.</translation>
    </message>
    <message>
        <source>The value is not complete.</source>
        <translation>Der Wert ist nicht vollständig.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value. Write digits with &quot;%2&quot; as decimal sign, without group separators; the unit can be %3.</source>
        <translation>„%1“ ist kein Wert. Schreiben Sie Ziffern mit „%2“ als Dezimalzeichen und ohne Tausendertrennzeichen; die Einheit kann %3 sein.</translation>
    </message>
    <message>
        <source>The value is too large.</source>
        <translation>Der Wert ist zu groß.</translation>
    </message>
</context>
<context>
    <name>KivSystem::MarkerExporter</name>
    <message>
        <source>Text File (*.txt)</source>
        <translation>Textdatei (*.txt)</translation>
    </message>
    <message>
        <source>Cut File (*.cut)</source>
        <translation>Zuschnittdatei (*.cut)</translation>
    </message>
    <message>
        <source>DXF File (*.dxf)</source>
        <translation>DXF-Datei (*.dxf)</translation>
    </message>
</context>
<context>
    <name>KivSystem::NC::EastmanOptionsWidget</name>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>During Outline</source>
        <translation>Während des Umrisses</translation>
    </message>
    <message>
        <source>Before Outline</source>
        <translation>Vor dem Umriss</translation>
    </message>
    <message>
        <source>After Outline</source>
        <translation>Nach dem Umriss</translation>
    </message>
    <message>
        <source>PUNCH</source>
        <translation>PUNCH</translation>
    </message>
    <message>
        <source>DRILL</source>
        <translation>DRILL</translation>
    </message>
    <message>
        <source>VNCH</source>
        <translation>VNCH</translation>
    </message>
    <message>
        <source>SLIT</source>
        <translation>SLIT</translation>
    </message>
    <message>
        <source>LASER</source>
        <translation>LASER</translation>
    </message>
    <message>
        <source>Internal Pieces Only</source>
        <translation>Nur innere Teile</translation>
    </message>
    <message>
        <source>Outline Only</source>
        <translation>Nur Umriss</translation>
    </message>
</context>
<context>
    <name>KivSystem::WidgetUserInterface</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 existiert bereits.
Soll die Datei ersetzt werden?</translation>
    </message>
</context>
<context>
    <name>QCoreApplication</name>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>Polygon optimization is performed only in Zentrim View?%1To export non optimized polygons, press Continue?</source>
        <translation>Polygone werden nur in der Zentrim-Ansicht optimiert.%1Um nicht optimierte Polygone zu exportieren, drücken Sie Weiter.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>  Go to Zentrim View  </source>
        <translation>  Zur Zentrim-Ansicht wechseln  </translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Export Document as</source>
        <translation>Dokument exportieren als</translation>
    </message>
    <message>
        <source>cannot open font table file:</source>
        <translation>Schriftdatei kann nicht geöffnet werden:</translation>
    </message>
    <message>
        <source>cannot reset font table file pointer:</source>
        <translation>In der Schriftdatei kann nicht zum Anfang gegangen werden:</translation>
    </message>
    <message>
        <source>cannot seek font table file:</source>
        <translation>Stelle der Schriftdatei ist nicht zu erreichen:</translation>
    </message>
    <message>
        <source>cannot read font table file:</source>
        <translation>Schriftdatei kann nicht gelesen werden:</translation>
    </message>
    <message>
        <source>invalid glyph data length, failed to parse bezier point</source>
        <translation>Buchstabe der Schriftdatei ist unvollständig: die Kurve hat kein Ende</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Block</translation>
    </message>
    <message>
        <source>Cut Down</source>
        <translation>Geteilt</translation>
    </message>
    <message>
        <source>Fold</source>
        <translation>Bruch</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skaliert</translation>
    </message>
</context>
<context>
    <name>TextExportFormat</name>
    <message>
        <source>Export Format</source>
        <translation>Exportformat</translation>
    </message>
    <message>
        <source>Insert the selected fields</source>
        <translation>Ausgewählte Felder einfügen</translation>
    </message>
    <message>
        <source>Remove the selected fields</source>
        <translation>Ausgewählte Felder entfernen</translation>
    </message>
</context>
<context>
    <name>TextExportOptions</name>
    <message>
        <source>Text File Options</source>
        <translation>Optionen der Textdatei</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Field Separator</source>
        <translation>Feldtrennzeichen</translation>
    </message>
    <message>
        <source>Tab Character</source>
        <translation>Tabulatorzeichen</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Anderes</translation>
    </message>
    <message>
        <source>Repeating Field Separator</source>
        <translation>Trennzeichen in Wiederholfeldern</translation>
    </message>
    <message>
        <source>Repeating Field Character</source>
        <translation>Zeichen für Wiederholfelder</translation>
    </message>
    <message>
        <source>One Line Per Size</source>
        <translation>Eine Zeile je Größe</translation>
    </message>
</context>
<context>
    <name>TextProcessor</name>
    <message>
        <source>Fold on Bottom</source>
        <translation>Bruch unten</translation>
    </message>
    <message>
        <source>Fold on Top</source>
        <translation>Bruch oben</translation>
    </message>
    <message>
        <source>Tubular</source>
        <translation>Schlauchware</translation>
    </message>
    <message>
        <source>Plain</source>
        <translation>Offenbreit</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
</context>
<context>
    <name>TextProcessorImpl</name>
    <message>
        <source>Marker Information</source>
        <translation>Angaben zum Schnittbild</translation>
    </message>
    <message>
        <source>Fabric Information</source>
        <translation>Angaben zum Stoff</translation>
    </message>
    <message>
        <source>Fabric and Layer</source>
        <translation>Stoff und Lage</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Bemerkungen</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Stichwörter</translation>
    </message>
    <message>
        <source>Creation date</source>
        <translation>Erstellungsdatum</translation>
    </message>
    <message>
        <source>Modification date</source>
        <translation>Änderungsdatum</translation>
    </message>
    <message>
        <source>Date stamp</source>
        <translation>Datumsstempel</translation>
    </message>
    <message>
        <source>Style name</source>
        <translation>Modellname</translation>
    </message>
    <message>
        <source>Fabric name</source>
        <translation>Stoffname</translation>
    </message>
    <message>
        <source>Marker type</source>
        <translation>Schnittbildart</translation>
    </message>
    <message>
        <source>One Way</source>
        <translation>Nur eine Richtung</translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Layer name</source>
        <translation>Lagenname</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Estimate</source>
        <translation>Schätzwert</translation>
    </message>
    <message>
        <source>Efficiency</source>
        <translation>Nutzungsgrad</translation>
    </message>
    <message>
        <source>Placed pieces</source>
        <translation>Gelegte Teile</translation>
    </message>
    <message>
        <source>Pieces to be placed</source>
        <translation>Zu legende Teile</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Special</source>
        <translation>Sondergröße</translation>
    </message>
    <message>
        <source>Breakdown value</source>
        <translation>Wert im Größenschlüssel</translation>
    </message>
</context>
</TS>
