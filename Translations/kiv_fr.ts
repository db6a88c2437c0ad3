<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>CutParametersANSI</name>
    <message>
        <source>Cut Parameters</source>
        <translation>Paramètres de coupe</translation>
    </message>
    <message>
        <source>Scale in X:</source>
        <translation>Échelle en X :</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Scale in Y:</source>
        <translation>Échelle en Y :</translation>
    </message>
    <message>
        <source>Reduce Number of Points:</source>
        <translation>Réduire le nombre de points :</translation>
    </message>
    <message>
        <source>Generate Intermediate Points:</source>
        <translation>Générer des points intermédiaires :</translation>
    </message>
    <message>
        <source>Generate Notches Command (M19)</source>
        <translation>Générer la commande de crans (M19)</translation>
    </message>
    <message>
        <source>Generate Console Command (M20)</source>
        <translation>Générer la commande de console (M20)</translation>
    </message>
    <message>
        <source>Generate Labels Command (M31)</source>
        <translation>Générer la commande d’étiquettes (M31)</translation>
    </message>
    <message>
        <source>Generate Pen Commands for Piece Info</source>
        <translation>Générer les commandes de stylo pour les infos de pièce</translation>
    </message>
    <message>
        <source>Synchronize Pen Up Commands with Cutter</source>
        <translation>Synchroniser les levées de stylo avec le découpeur</translation>
    </message>
    <message>
        <source>Internal Cut</source>
        <translation>Coupe intérieure</translation>
    </message>
    <message>
        <source>Cut Out Internal Lines:</source>
        <translation>Couper les lignes intérieures :</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>Before Outline</source>
        <translation>Avant le contour</translation>
    </message>
    <message>
        <source>After Outline</source>
        <translation>Après le contour</translation>
    </message>
    <message>
        <source>Notch Cutting Order:</source>
        <translation>Ordre de coupe des crans :</translation>
    </message>
    <message>
        <source>During Outline</source>
        <translation>Pendant le contour</translation>
    </message>
    <message>
        <source>Special Notch Treatment for Cutting Edge Cutters</source>
        <translation>Traitement spécial des crans pour découpeurs à arête de coupe</translation>
    </message>
    <message>
        <source>Notch Length:</source>
        <translation>Longueur des crans :</translation>
    </message>
    <message>
        <source>Cut User Punch Holes with a Different Tool (M44)</source>
        <translation>Percer les trous de l’utilisateur avec un autre outil (M44)</translation>
    </message>
    <message>
        <source>External Cut</source>
        <translation>Coupe extérieure</translation>
    </message>
    <message>
        <source>Cut Fabric Edge</source>
        <translation>Couper le bord du tissu</translation>
    </message>
    <message>
        <source>Cut Spacing:</source>
        <translation>Espacement des coupes :</translation>
    </message>
    <message>
        <source>Length of Cut:</source>
        <translation>Longueur de coupe :</translation>
    </message>
    <message>
        <source>Cut External Punch Holes</source>
        <translation>Percer les trous extérieurs</translation>
    </message>
    <message>
        <source>M43 Tool</source>
        <translation>Outil M43</translation>
    </message>
    <message>
        <source>M44 Tool</source>
        <translation>Outil M44</translation>
    </message>
    <message>
        <source>Frame Advance</source>
        <translation>Avance de fenêtre</translation>
    </message>
    <message>
        <source>Generate Frame Advance Command (M69)</source>
        <translation>Générer la commande d’avance de fenêtre (M69)</translation>
    </message>
    <message>
        <source>Cutter Length in X:</source>
        <translation>Longueur du découpeur en X :</translation>
    </message>
    <message>
        <source>Threshold Frame Advance:</source>
        <translation>Seuil d’avance de fenêtre :</translation>
    </message>
    <message>
        <source>Blocking Options</source>
        <translation>Options de blocs</translation>
    </message>
    <message>
        <source>Cut Blocks Outline (Single Piece)</source>
        <translation>Couper le contour des blocs (pièce unique)</translation>
    </message>
    <message>
        <source>Cut Blocks (Multiple Pieces)</source>
        <translation>Couper les blocs (plusieurs pièces)</translation>
    </message>
    <message>
        <source>Internal Pieces Only</source>
        <translation>Pièces intérieures seulement</translation>
    </message>
    <message>
        <source>Outline Only</source>
        <translation>Contour seulement</translation>
    </message>
    <message>
        <source>Generate Individual Cut Files for Blocks (Multiple Pieces)</source>
        <translation>Générer un fichier de coupe par bloc (plusieurs pièces)</translation>
    </message>
    <message>
        <source>Reduce Number of Points</source>
        <translation>Réduire le nombre de points</translation>
    </message>
    <message>
        <source>Generate Intermediate Points</source>
        <translation>Générer des points intermédiaires</translation>
    </message>
</context>
<context>
    <name>CutParametersEastman</name>
    <message>
        <source>Cut Parameters</source>
        <translation>Paramètres de coupe</translation>
    </message>
    <message>
        <source>Scale in X:</source>
        <translation>Échelle en X :</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Scale in Y:</source>
        <translation>Échelle en Y :</translation>
    </message>
    <message>
        <source>Notch Cutting Order:</source>
        <translation>Ordre de coupe des crans :</translation>
    </message>
    <message>
        <source>Notch Length:</source>
        <translation>Longueur des crans :</translation>
    </message>
    <message>
        <source>Drill Type:</source>
        <translation>Type de perçage :</translation>
    </message>
    <message>
        <source>Drill Angle:</source>
        <translation>Angle de perçage :</translation>
    </message>
    <message>
        <source>Cut Blocks Outline (Single Piece)</source>
        <translation>Couper le contour des blocs (pièce unique)</translation>
    </message>
    <message>
        <source>Cut Blocks (Multiple Pieces)</source>
        <translation>Couper les blocs (plusieurs pièces)</translation>
    </message>
    <message>
        <source>Cut Internal Lines</source>
        <translation>Couper les lignes intérieures</translation>
    </message>
    <message>
        <source>Generate Individual Cut Files for Blocks (Multiple Pieces)</source>
        <translation>Générer un fichier de coupe par bloc (plusieurs pièces)</translation>
    </message>
</context>
<context>
    <name>DXFNESTERProcessor</name>
    <message>
        <source>Cannot export. One or more piece names are repeating.</source>
        <translation>Export impossible. Un ou plusieurs noms de pièces se répètent.</translation>
    </message>
</context>
<context>
    <name>IllustratorExportOptions</name>
    <message>
        <source>Form</source>
        <translation>Formulaire</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Scale:</source>
        <translation>Échelle :</translation>
    </message>
</context>
<context>
    <name>IllustratorProcessor</name>
    <message>
        <source>Single</source>
        <translation>Simple</translation>
    </message>
    <message>
        <source>Paired</source>
        <translation>Par paire</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivApplication</name>
    <message>
        <source>Invalid Operation</source>
        <translation>Opération non valide</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivDialog</name>
    <message>
        <source>Enter a value from %1 to %2.</source>
        <translation>Entrez une valeur de %1 à %2.</translation>
    </message>
    <message>
        <source>%1: enter a value from %2 to %3.</source>
        <translation>%1&#xa0;: entrez une valeur de %2 à %3.</translation>
    </message>
</context>
<context>
    <name>KivSystem::KivLocale</name>
    <message>
        <source>cm, mm or in</source>
        <translation>cm, mm ou in</translation>
    </message>
    <message>
        <source>a whole number from 0 to %1</source>
        <translation>un nombre entier de 0 à %1</translation>
    </message>
    <message>
        <source>The setting %1 has the value &quot;%2&quot;; expected is %3.</source>
        <translation>Le réglage %1 a la valeur «&#xa0;%2&#xa0;»&#xa0;; valeur attendue&#xa0;: %3.</translation>
    </message>
    <message>
        <source>The value is not complete.</source>
        <translation>La valeur n’est pas complète.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value. Write digits with &quot;%2&quot; as decimal sign, without group separators; the unit can be %3.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une valeur. Écrivez des chiffres avec «&#xa0;%2&#xa0;» comme séparateur décimal, sans séparateur de milliers&#xa0;; l’unité peut être %3.</translation>
    </message>
    <message>
        <source>The value is too large.</source>
        <translation>La valeur est trop grande.</translation>
    </message>
</context>
<context>
    <name>KivSystem::MarkerExporter</name>
    <message>
        <source>Text File (*.txt)</source>
        <translation>Fichier texte (*.txt)</translation>
    </message>
    <message>
        <source>Cut File (*.cut)</source>
        <translation>Fichier de coupe (*.cut)</translation>
    </message>
    <message>
        <source>DXF File (*.dxf)</source>
        <translation>Fichier DXF (*.dxf)</translation>
    </message>
</context>
<context>
    <name>KivSystem::NC::EastmanOptionsWidget</name>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>During Outline</source>
        <translation>Pendant le contour</translation>
    </message>
    <message>
        <source>Before Outline</source>
        <translation>Avant le contour</translation>
    </message>
    <message>
        <source>After Outline</source>
        <translation>Après le contour</translation>
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
        <translation>Pièces intérieures seulement</translation>
    </message>
    <message>
        <source>Outline Only</source>
        <translation>Contour seulement</translation>
    </message>
</context>
<context>
    <name>KivSystem::WidgetUserInterface</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 existe déjà.
Voulez-vous le remplacer ?</translation>
    </message>
</context>
<context>
    <name>QCoreApplication</name>
    <message>
        <source>All Files (*.*)</source>
        <translation>Tous les fichiers (*.*)</translation>
    </message>
    <message>
        <source>Polygon optimization is performed only in Zentrim View?%1To export non optimized polygons, press Continue?</source>
        <translation>L’optimisation des polygones n’est effectuée que dans la vue Zentrim.%1Pour exporter des polygones non optimisés, appuyez sur Continuer.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>  Go to Zentrim View  </source>
        <translation>  Passer à la vue Zentrim  </translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Export Document as</source>
        <translation>Exporter le document sous</translation>
    </message>
    <message>
        <source>cannot open font table file:</source>
        <translation>impossible d&apos;ouvrir le fichier de police :</translation>
    </message>
    <message>
        <source>cannot reset font table file pointer:</source>
        <translation>impossible de revenir au début du fichier de police :</translation>
    </message>
    <message>
        <source>cannot seek font table file:</source>
        <translation>position inaccessible dans le fichier de police :</translation>
    </message>
    <message>
        <source>cannot read font table file:</source>
        <translation>impossible de lire le fichier de police :</translation>
    </message>
    <message>
        <source>invalid glyph data length, failed to parse bezier point</source>
        <translation>caractère incomplet dans le fichier de police : la courbe n&apos;a pas d&apos;extrémité</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Bloc</translation>
    </message>
    <message>
        <source>Cut Down</source>
        <translation>Coupé en deux</translation>
    </message>
    <message>
        <source>Fold</source>
        <translation>Pli</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Échelle</translation>
    </message>
</context>
<context>
    <name>TextExportFormat</name>
    <message>
        <source>Export Format</source>
        <translation>Format d’exportation</translation>
    </message>
    <message>
        <source>Insert the selected fields</source>
        <translation>Insérer les champs sélectionnés</translation>
    </message>
    <message>
        <source>Remove the selected fields</source>
        <translation>Retirer les champs sélectionnés</translation>
    </message>
</context>
<context>
    <name>TextExportOptions</name>
    <message>
        <source>Text File Options</source>
        <translation>Options du fichier texte</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Field Separator</source>
        <translation>Séparateur de champs</translation>
    </message>
    <message>
        <source>Tab Character</source>
        <translation>Tabulation</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Autre</translation>
    </message>
    <message>
        <source>Repeating Field Separator</source>
        <translation>Séparateur des champs répétés</translation>
    </message>
    <message>
        <source>Repeating Field Character</source>
        <translation>Caractère de champ répété</translation>
    </message>
    <message>
        <source>One Line Per Size</source>
        <translation>Une ligne par taille</translation>
    </message>
</context>
<context>
    <name>TextProcessor</name>
    <message>
        <source>Fold on Bottom</source>
        <translation>Pli en bas</translation>
    </message>
    <message>
        <source>Fold on Top</source>
        <translation>Pli en haut</translation>
    </message>
    <message>
        <source>Tubular</source>
        <translation>Tubulaire</translation>
    </message>
    <message>
        <source>Plain</source>
        <translation>À plat</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
</context>
<context>
    <name>TextProcessorImpl</name>
    <message>
        <source>Marker Information</source>
        <translation>Informations sur le placement</translation>
    </message>
    <message>
        <source>Fabric Information</source>
        <translation>Informations sur le tissu</translation>
    </message>
    <message>
        <source>Fabric and Layer</source>
        <translation>Tissu et couche</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>Nom du fichier</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Commentaires</translation>
    </message>
    <message>
        <source>Keywords</source>
        <translation>Mots-clés</translation>
    </message>
    <message>
        <source>Creation date</source>
        <translation>Date de création</translation>
    </message>
    <message>
        <source>Modification date</source>
        <translation>Date de modification</translation>
    </message>
    <message>
        <source>Date stamp</source>
        <translation>Date apposée</translation>
    </message>
    <message>
        <source>Style name</source>
        <translation>Nom du modèle</translation>
    </message>
    <message>
        <source>Fabric name</source>
        <translation>Nom du tissu</translation>
    </message>
    <message>
        <source>Marker type</source>
        <translation>Type de placement</translation>
    </message>
    <message>
        <source>One Way</source>
        <translation>Sens unique</translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation>Espacement</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Laize</translation>
    </message>
    <message>
        <source>Layer name</source>
        <translation>Nom de la couche</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Longueur</translation>
    </message>
    <message>
        <source>Estimate</source>
        <translation>Estimation</translation>
    </message>
    <message>
        <source>Efficiency</source>
        <translation>Efficience</translation>
    </message>
    <message>
        <source>Placed pieces</source>
        <translation>Pièces placées</translation>
    </message>
    <message>
        <source>Pieces to be placed</source>
        <translation>Pièces à placer</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Special</source>
        <translation>Taille spéciale</translation>
    </message>
    <message>
        <source>Breakdown value</source>
        <translation>Valeur de répartition</translation>
    </message>
</context>
</TS>
