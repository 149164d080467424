<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AddToBatchDialog</name>
    <message>
        <source>Add to batch</source>
        <translation>Zum Stapel hinzufügen</translation>
    </message>
    <message>
        <source>Add file: c\:file.bmp</source>
        <translation>Datei hinzufügen: c\:file.bmp</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>AutoCrop</name>
    <message>
        <source>Auto-crop image</source>
        <translation>Bild automatisch zuschneiden</translation>
    </message>
    <message>
        <source>Crop mode</source>
        <translation>Zuschneidemodus</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Transparent</translation>
    </message>
    <message>
        <source>Left top pixel</source>
        <translation>Pixel oben links</translation>
    </message>
    <message>
        <source>Bottom right pixel</source>
        <translation>Pixel unten rechts</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Crop areas</source>
        <translation>Zuschneidebereiche</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Toleranz:</translation>
    </message>
</context>
<context>
    <name>BlurToolBar</name>
    <message>
        <source>Blur brush toolbar</source>
        <translation>Optionsleiste Weichzeichner</translation>
    </message>
    <message>
        <source>Click to open Blur Brush Parameters Window</source>
        <translation>Klicken, um das Fenster mit den Parametern des Weichzeichners zu öffnen</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>Set brush spacing</source>
        <translation>Pinselabstand festlegen</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Strenght:</source>
        <translation>Stärke:</translation>
    </message>
    <message>
        <source>Painting mode</source>
        <translation>Malmodus</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Multiply</source>
        <translation>Multiplizieren</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Negativ multiplizieren</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Ineinanderkopieren</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Exclusion</source>
        <translation>Ausschluss</translation>
    </message>
    <message>
        <source>Lighten colors</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken colors</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Soft light</source>
        <translation>Weiches Licht</translation>
    </message>
    <message>
        <source>Hard light</source>
        <translation>Hartes Licht</translation>
    </message>
    <message>
        <source>Color dodge</source>
        <translation>Farbig abwedeln</translation>
    </message>
    <message>
        <source>Color burn</source>
        <translation>Farbig nachbelichten</translation>
    </message>
    <message>
        <source>Addition</source>
        <translation>Addieren</translation>
    </message>
    <message>
        <source> Sample all layers</source>
        <translation> Alle Ebenen einbeziehen</translation>
    </message>
</context>
<context>
    <name>BrushPanel</name>
    <message>
        <source>Brush tool</source>
        <translation>Pinselwerkzeug</translation>
    </message>
    <message>
        <source>Brush preview</source>
        <translation>Pinselvorschau</translation>
    </message>
</context>
<context>
    <name>BrushPresets</name>
    <message>
        <source>Hard round</source>
        <translation>Hart rund</translation>
    </message>
    <message>
        <source>Medium round</source>
        <translation>Mittelhart rund</translation>
    </message>
    <message>
        <source>Soft round</source>
        <translation>Weich rund</translation>
    </message>
    <message>
        <source>Halo</source>
        <translation>Lichthof</translation>
    </message>
    <message>
        <source>Calligraphy</source>
        <translation>Kalligrafie</translation>
    </message>
    <message>
        <source>Left-handed pen</source>
        <translation>Linkshänderfeder</translation>
    </message>
    <message>
        <source>Flat</source>
        <translation>Flach</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <source>Diamond</source>
        <translation>Raute</translation>
    </message>
    <message>
        <source>Chalk</source>
        <translation>Kreide</translation>
    </message>
    <message>
        <source>Spray can</source>
        <translation>Sprühdose</translation>
    </message>
    <message>
        <source>Dry bristle</source>
        <translation>Trockene Borsten</translation>
    </message>
    <message>
        <source>Dotted line</source>
        <translation>Punktlinie</translation>
    </message>
    <message>
        <source>Dashes</source>
        <translation>Strichlinie</translation>
    </message>
    <message>
        <source>Stars</source>
        <translation>Sterne</translation>
    </message>
</context>
<context>
    <name>BrushPreview</name>
    <message>
        <source>Brush preview</source>
        <translation>Pinselvorschau</translation>
    </message>
    <message>
        <source>No brush</source>
        <translation>Kein Pinsel</translation>
    </message>
    <message>
        <source>%1: %2, hardness %3%, roundness %4%, angle %5°</source>
        <translation>%1: %2, Härte %3%, Rundung %4%, Winkel %5°</translation>
    </message>
</context>
<context>
    <name>BrushSettingsForm</name>
    <message>
        <source>Brush presets</source>
        <translation>Pinselvorgaben</translation>
    </message>
    <message>
        <source>&amp;Save preset...</source>
        <translation>Vorgabe &amp;speichern...</translation>
    </message>
    <message>
        <source>Re&amp;name...</source>
        <translation>&amp;Umbenennen...</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Si&amp;ze:</source>
        <translation>&amp;Größe:</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>S&amp;pacing:</source>
        <translation>&amp;Abstand:</translation>
    </message>
    <message>
        <source>Spacing</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>&amp;Opacity:</source>
        <translation>&amp;Deckkraft:</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Shap&amp;e:</source>
        <translation>&amp;Form:</translation>
    </message>
    <message>
        <source>&amp;Hardness:</source>
        <translation>&amp;Härte:</translation>
    </message>
    <message>
        <source>Hardness</source>
        <translation>Härte</translation>
    </message>
    <message>
        <source>&amp;Roundness:</source>
        <translation>&amp;Rundung:</translation>
    </message>
    <message>
        <source>Roundness</source>
        <translation>Rundung</translation>
    </message>
    <message>
        <source>&amp;Angle:</source>
        <translation>&amp;Winkel:</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>°</source>
        <translation>°</translation>
    </message>
    <message>
        <source>Pen and stroke</source>
        <translation>Stift und Strich</translation>
    </message>
    <message>
        <source>Pressure makes the stamp larger</source>
        <translation>Druck macht den Abdruck größer</translation>
    </message>
    <message>
        <source>Pressure makes the edge harder</source>
        <translation>Druck macht die Kante härter</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Pressure leads from the background to the foreground color</source>
        <translation>Druck führt von der Hintergrund- zur Vordergrundfarbe</translation>
    </message>
    <message>
        <source>The tip turns with the direction of the stroke</source>
        <translation>Die Spitze dreht sich mit der Richtung des Strichs</translation>
    </message>
    <message>
        <source>Pressure makes the stamp more opaque</source>
        <translation>Druck macht den Abdruck deckender</translation>
    </message>
    <message>
        <source>Scatter</source>
        <translation>Streuung</translation>
    </message>
    <message>
        <source>Stamps are strewn about the path</source>
        <translation>Abdrücke werden um den Pfad gestreut</translation>
    </message>
</context>
<context>
    <name>BrushTip</name>
    <message>
        <source>Round</source>
        <translation>Rund</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <source>Diamond</source>
        <translation>Raute</translation>
    </message>
    <message>
        <source>Star</source>
        <translation>Stern</translation>
    </message>
    <message>
        <source>Spray</source>
        <translation>Spray</translation>
    </message>
</context>
<context>
    <name>BrushToolBar</name>
    <message>
        <source>Brush toolbar</source>
        <translation>Optionsleiste Pinsel</translation>
    </message>
    <message>
        <source>Brush Parameters Window</source>
        <translation>Fenster mit den Pinselparametern</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>Set brush spacing</source>
        <translation>Pinselabstand festlegen</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source>Texture Window</source>
        <translation>Fenster mit den Texturen</translation>
    </message>
    <message>
        <source>Set Fill Mode</source>
        <translation>Füllart festlegen</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>Pattern+Color</source>
        <translation>Muster+Farbe</translation>
    </message>
    <message>
        <source>Gradient</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Pattern+Gradient</source>
        <translation>Muster+Verlauf</translation>
    </message>
    <message>
        <source>Random Color</source>
        <translation>Zufallsfarbe</translation>
    </message>
    <message>
        <source>Set Painting Mode</source>
        <translation>Malmodus festlegen</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Multiply</source>
        <translation>Multiplizieren</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Negativ multiplizieren</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Ineinanderkopieren</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Exclusion</source>
        <translation>Ausschluss</translation>
    </message>
    <message>
        <source>Lighten colors</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken colors</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Soft light</source>
        <translation>Weiches Licht</translation>
    </message>
    <message>
        <source>Hard light</source>
        <translation>Hartes Licht</translation>
    </message>
    <message>
        <source>Color dodge</source>
        <translation>Farbig abwedeln</translation>
    </message>
    <message>
        <source>Color burn</source>
        <translation>Farbig nachbelichten</translation>
    </message>
    <message>
        <source>Addition</source>
        <translation>Addieren</translation>
    </message>
</context>
<context>
    <name>CanvasSize</name>
    <message>
        <source>Canvas Size</source>
        <translation>Leinwandgröße</translation>
    </message>
    <message>
        <source>Current size:</source>
        <translation>Aktuelle Größe:</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>New size:</source>
        <translation>Neue Größe:</translation>
    </message>
    <message>
        <source>Width unit</source>
        <translation>Einheit der Breite</translation>
    </message>
    <message>
        <source>Height unit</source>
        <translation>Einheit der Höhe</translation>
    </message>
    <message>
        <source>DPI:</source>
        <translation>DPI:</translation>
    </message>
    <message>
        <source>Constrain proportions</source>
        <translation>Proportionen beibehalten</translation>
    </message>
    <message>
        <source>Anchor:</source>
        <translation>Anker:</translation>
    </message>
    <message>
        <source>Click to change the anchor settings</source>
        <translation>Klicken, um den Anker zu ändern</translation>
    </message>
</context>
<context>
    <name>ColorPickerToolBar</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Sample size:</source>
        <translation>Aufnahmegröße:</translation>
    </message>
    <message>
        <source>Point sample</source>
        <translation>Einzelnes Pixel</translation>
    </message>
    <message>
        <source>3x3 average</source>
        <translation>3x3-Mittelwert</translation>
    </message>
    <message>
        <source>5x5 average</source>
        <translation>5x5-Mittelwert</translation>
    </message>
    <message>
        <source>7x7 average</source>
        <translation>7x7-Mittelwert</translation>
    </message>
    <message>
        <source>Sample:</source>
        <translation>Aufnahme:</translation>
    </message>
    <message>
        <source>Current Layer</source>
        <translation>Aktuelle Ebene</translation>
    </message>
    <message>
        <source>All layers</source>
        <translation>Alle Ebenen</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>R:</source>
        <translation>R:</translation>
    </message>
    <message>
        <source>G:</source>
        <translation>G:</translation>
    </message>
    <message>
        <source>B:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
</context>
<context>
    <name>ColorSamplerPanel</name>
    <message>
        <source>Color sampler tool</source>
        <translation>Farbaufnahme-Werkzeug</translation>
    </message>
    <message>
        <source>Color samples</source>
        <translation>Farbaufnahmen</translation>
    </message>
</context>
<context>
    <name>ColorSamplerToolBar</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Sample size:</source>
        <translation>Aufnahmegröße:</translation>
    </message>
    <message>
        <source>Point sample</source>
        <translation>Einzelnes Pixel</translation>
    </message>
    <message>
        <source>3x3 average</source>
        <translation>3x3-Mittelwert</translation>
    </message>
    <message>
        <source>5x5 average</source>
        <translation>5x5-Mittelwert</translation>
    </message>
    <message>
        <source>7x7 average</source>
        <translation>7x7-Mittelwert</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>ControlNode</name>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Handle %1 of %2</source>
        <translation>Griff %1 von %2</translation>
    </message>
</context>
<context>
    <name>CropToolBarMain</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Set reference point location</source>
        <translation>Lage des Bezugspunkts festlegen</translation>
    </message>
    <message>
        <source>Reference point</source>
        <translation>Bezugspunkt</translation>
    </message>
    <message>
        <source>Angle:</source>
        <translation>Winkel:</translation>
    </message>
    <message>
        <source>º</source>
        <translation>º</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>Shade the cropped area</source>
        <translation>Abgeschnittenen Bereich abdecken</translation>
    </message>
    <message>
        <source>Shield</source>
        <translation>Abdecken</translation>
    </message>
    <message>
        <source>Set the color of cropped area shade</source>
        <translation>Farbe der Abdeckung festlegen</translation>
    </message>
    <message>
        <source>Color:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Shield color</source>
        <translation>Farbe der Abdeckung</translation>
    </message>
    <message>
        <source>Set opacity of cropped area color shade</source>
        <translation>Deckkraft der Abdeckung festlegen</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Area:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Sets the type of crop overlay</source>
        <translation>Art der Hilfslinien beim Zuschneiden festlegen</translation>
    </message>
    <message>
        <source>Group Guide Overlay:</source>
        <translation>Hilfslinien:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ohne</translation>
    </message>
    <message>
        <source>Rule of Thirds</source>
        <translation>Drittelregel</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Raster</translation>
    </message>
    <message>
        <source>Apply the crop</source>
        <translation>Zuschneiden anwenden</translation>
    </message>
    <message>
        <source>Cancel the crop</source>
        <translation>Zuschneiden abbrechen</translation>
    </message>
    <message>
        <source>Crop to a new document</source>
        <translation>In neues Dokument zuschneiden</translation>
    </message>
</context>
<context>
    <name>CropToolBarStart</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Swap width and height</source>
        <translation>Breite und Höhe vertauschen</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>Set the crop height</source>
        <translation>Höhe des Zuschnitts festlegen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Use values from the image</source>
        <translation>Werte des Bildes verwenden</translation>
    </message>
    <message>
        <source>From Image</source>
        <translation>Aus Bild</translation>
    </message>
</context>
<context>
    <name>DodgeToolBar</name>
    <message>
        <source>Dodge brush toolbar</source>
        <translation>Optionsleiste Abwedeln</translation>
    </message>
    <message>
        <source>Click to open Brush Parameters Window</source>
        <translation>Klicken, um das Fenster mit den Pinselparametern zu öffnen</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Set brush size</source>
        <translation>Pinselgröße festlegen</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>Set brush spacing</source>
        <translation>Pinselabstand festlegen</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Painting mode</source>
        <translation>Malmodus</translation>
    </message>
    <message>
        <source>Shadows</source>
        <translation>Tiefen</translation>
    </message>
    <message>
        <source>Midtones</source>
        <translation>Mitteltöne</translation>
    </message>
    <message>
        <source>Highlights</source>
        <translation>Lichter</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
    <message>
        <source>Exposure:</source>
        <translation>Belichtung:</translation>
    </message>
    <message>
        <source>Set exposure for stroke</source>
        <translation>Belichtung des Strichs festlegen</translation>
    </message>
</context>
<context>
    <name>EraserToolBar</name>
    <message>
        <source>Eraser toolbar</source>
        <translation>Optionsleiste Radierer</translation>
    </message>
    <message>
        <source>Click to open the Eraser Parameters Window</source>
        <translation>Klicken, um das Fenster mit den Parametern des Radierers zu öffnen</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
</context>
<context>
    <name>FillCanToolbar</name>
    <message>
        <source>Fillcan tool</source>
        <translation>Fülleimer</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Toleranz:</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>Click to select a fill pattern</source>
        <translation>Klicken, um ein Füllmuster zu wählen</translation>
    </message>
    <message>
        <source>Fill mode</source>
        <translation>Füllart</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>Blend mode</source>
        <translation>Füllmethode</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Multiply</source>
        <translation>Multiplizieren</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Negativ multiplizieren</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Ineinanderkopieren</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Exclusion</source>
        <translation>Ausschluss</translation>
    </message>
    <message>
        <source>Lighten colors</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken colors</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Soft light</source>
        <translation>Weiches Licht</translation>
    </message>
    <message>
        <source>Hard light</source>
        <translation>Hartes Licht</translation>
    </message>
    <message>
        <source>Color dodge</source>
        <translation>Farbig abwedeln</translation>
    </message>
    <message>
        <source>Color burn</source>
        <translation>Farbig nachbelichten</translation>
    </message>
    <message>
        <source>Addition</source>
        <translation>Addieren</translation>
    </message>
    <message>
        <source>Ignore transparency</source>
        <translation>Transparenz ignorieren</translation>
    </message>
    <message>
        <source>Antialiasing</source>
        <translation>Kanten glätten</translation>
    </message>
    <message>
        <source>Contiguous</source>
        <translation>Benachbart</translation>
    </message>
    <message>
        <source>All layers</source>
        <translation>Alle Ebenen</translation>
    </message>
</context>
<context>
    <name>GradientEditor</name>
    <message>
        <source>Gradient editor</source>
        <translation>Verlaufseditor</translation>
    </message>
    <message>
        <source>Gradients</source>
        <translation>Verläufe</translation>
    </message>
    <message>
        <source>Doubleclick to add a gradient stop point</source>
        <translation>Doppelklicken, um einen Haltepunkt hinzuzufügen</translation>
    </message>
    <message>
        <source>Gradient stops</source>
        <translation>Haltepunkte des Verlaufs</translation>
    </message>
    <message>
        <source>Foreground Color</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Fc</source>
        <translation>Vg</translation>
    </message>
    <message>
        <source>Background Color</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Bc</source>
        <translation>Hg</translation>
    </message>
    <message>
        <source>Custom color</source>
        <translation>Eigene Farbe</translation>
    </message>
    <message>
        <source>Remove the current stop point</source>
        <translation>Aktuellen Haltepunkt entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove all stop points</source>
        <translation>Alle Haltepunkte entfernen</translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>R:</source>
        <translation>R:</translation>
    </message>
    <message>
        <source>Red value (0 - 255)</source>
        <translation>Rotwert (0 - 255)</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>G:</source>
        <translation>G:</translation>
    </message>
    <message>
        <source>Green value (0 - 255)</source>
        <translation>Grünwert (0 - 255)</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>B:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>Blue value (0 - 255)</source>
        <translation>Blauwert (0 - 255)</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source>Opacity (0 -100%)</source>
        <translation>Deckkraft (0 - 100%)</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>#00000000</source>
        <translation>#00000000</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>GradientPopup</name>
    <message>
        <source>Gradient tool</source>
        <translation>Verlaufswerkzeug</translation>
    </message>
    <message>
        <source>Gradients</source>
        <translation>Verläufe</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
</context>
<context>
    <name>GradientToolBar</name>
    <message>
        <source>Gradient toolbar</source>
        <translation>Optionsleiste Verlauf</translation>
    </message>
    <message>
        <source>Gradient</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Gradient type</source>
        <translation>Verlaufsart</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Set Painting Mode</source>
        <translation>Malmodus festlegen</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Multiply</source>
        <translation>Multiplizieren</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Negativ multiplizieren</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Ineinanderkopieren</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Exclusion</source>
        <translation>Ausschluss</translation>
    </message>
    <message>
        <source>Lighten colors</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken colors</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Soft light</source>
        <translation>Weiches Licht</translation>
    </message>
    <message>
        <source>Hard light</source>
        <translation>Hartes Licht</translation>
    </message>
    <message>
        <source>Color dodge</source>
        <translation>Farbig abwedeln</translation>
    </message>
    <message>
        <source>Color burn</source>
        <translation>Farbig nachbelichten</translation>
    </message>
    <message>
        <source>Addition</source>
        <translation>Addieren</translation>
    </message>
    <message>
        <source>Repeat count</source>
        <translation>Anzahl der Wiederholungen</translation>
    </message>
    <message>
        <source>Repeat count:</source>
        <translation>Wiederholungen:</translation>
    </message>
    <message>
        <source>Draw gradient outside selected area</source>
        <translation>Verlauf auch außerhalb des gewählten Bereichs zeichnen</translation>
    </message>
    <message>
        <source>Draw outside</source>
        <translation>Außerhalb zeichnen</translation>
    </message>
    <message>
        <source>Ping pong</source>
        <translation>Pingpong</translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation>Umkehren</translation>
    </message>
    <message>
        <source>Apply changes</source>
        <translation>Änderungen anwenden</translation>
    </message>
    <message>
        <source>Cancel changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
</context>
<context>
    <name>HistogramWidget</name>
    <message>
        <source>&amp;Logarithmic scale</source>
        <translation>&amp;Logarithmische Skala</translation>
    </message>
</context>
<context>
    <name>HistoryItem</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
</context>
<context>
    <name>HistoryViewer</name>
    <message>
        <source>History</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>ImageSize</name>
    <message>
        <source>Image Size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Document size:</source>
        <translation>Dokumentgröße:</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Width unit</source>
        <translation>Einheit der Breite</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Height unit</source>
        <translation>Einheit der Höhe</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>Auflösung:</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Resolution unit</source>
        <translation>Einheit der Auflösung</translation>
    </message>
    <message>
        <source>pixels/inch</source>
        <translation>Pixel/Zoll</translation>
    </message>
    <message>
        <source>Pixel dimensions:</source>
        <translation>Pixelmaße:</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Constrain proportions</source>
        <translation>Proportionen beibehalten</translation>
    </message>
    <message>
        <source>Resample image:</source>
        <translation>Bild neu berechnen:</translation>
    </message>
    <message>
        <source>Resampling method</source>
        <translation>Verfahren der Neuberechnung</translation>
    </message>
    <message>
        <source>Nearest Neighbor</source>
        <translation>Nächster Nachbar</translation>
    </message>
    <message>
        <source>Bilinear</source>
        <translation>Bilinear</translation>
    </message>
    <message>
        <source>Bicubic</source>
        <translation>Bikubisch</translation>
    </message>
</context>
<context>
    <name>IncompleteDocumentInfo</name>
    <message>
        <source>Norvane</source>
        <translation>Norvane</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;/p&gt;The source document consists of more than one layer.&lt;br&gt;The existing file format doesn&apos;t support information about layers.&lt;br&gt;How do you want to proceed?&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;/p&gt;Das Ausgangsdokument besteht aus mehr als einer Ebene.&lt;br&gt;Das bisherige Dateiformat kann Ebenen nicht speichern.&lt;br&gt;Wie möchten Sie fortfahren?&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Don&apos;t ask again</source>
        <translation>Nicht mehr fragen</translation>
    </message>
</context>
<context>
    <name>KXAddToBatchDialog</name>
    <message>
        <source>%1 (not exists)</source>
        <translation>%1 (nicht vorhanden)</translation>
    </message>
</context>
<context>
    <name>KXAddToBatchManager</name>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>Datei:</translation>
    </message>
    <message>
        <source>Folder: %1</source>
        <translation>Ordner: %1</translation>
    </message>
</context>
<context>
    <name>KXAnchorSelection</name>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
</context>
<context>
    <name>KXBatchInputModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>%1 (not exists)</source>
        <translation>%1 (nicht vorhanden)</translation>
    </message>
</context>
<context>
    <name>KXBrushSettings</name>
    <message>
        <source>Brush parameters</source>
        <translation>Pinselparameter</translation>
    </message>
    <message>
        <source>Save Preset</source>
        <translation>Vorgabe speichern</translation>
    </message>
    <message>
        <source>Rename Preset</source>
        <translation>Vorgabe umbenennen</translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation>Vorgabe löschen</translation>
    </message>
    <message>
        <source>Delete the brush preset &quot;%1&quot;?</source>
        <translation>Pinselvorgabe „%1“ löschen?</translation>
    </message>
</context>
<context>
    <name>KXColorDlg</name>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Hue and saturation</source>
        <translation>Farbton und Sättigung</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>Chosen color</source>
        <translation>Gewählte Farbe</translation>
    </message>
</context>
<context>
    <name>KXDocumentInterface</name>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
</context>
<context>
    <name>KXMdiArea</name>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
</context>
<context>
    <name>MagicWandToolbar</name>
    <message>
        <source>Magic wand toolbar</source>
        <translation>Optionsleiste Zauberstab</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Unite</source>
        <translation>Vereinigen</translation>
    </message>
    <message>
        <source>Subtract</source>
        <translation>Subtrahieren</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Schnittmenge bilden</translation>
    </message>
    <message>
        <source>Tolerance: </source>
        <translation>Toleranz: </translation>
    </message>
    <message>
        <source>Sample all layers</source>
        <translation>Alle Ebenen einbeziehen</translation>
    </message>
    <message>
        <source>Contiguous</source>
        <translation>Benachbart</translation>
    </message>
    <message>
        <source>Refine selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
</context>
<context>
    <name>MoveToolBar</name>
    <message>
        <source>Move tool</source>
        <translation>Verschiebewerkzeug</translation>
    </message>
    <message>
        <source>Show frame</source>
        <translation>Rahmen anzeigen</translation>
    </message>
</context>
<context>
    <name>NVCanvasSize</name>
    <message>
        <source>Current size: %1</source>
        <translation>Aktuelle Größe: %1</translation>
    </message>
    <message>
        <source>New size: %1</source>
        <translation>Neue Größe: %1</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
    <message>
        <source>%1 b</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 Kb</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 Mb</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 Gb</source>
        <translation>%1 GB</translation>
    </message>
</context>
<context>
    <name>NVCropToolbarMain</name>
    <message>
        <source>Select a color</source>
        <translation>Farbe wählen</translation>
    </message>
</context>
<context>
    <name>NVDocumentView</name>
    <message>
        <source>Canvas</source>
        <translation>Leinwand</translation>
    </message>
</context>
<context>
    <name>NVGradientEditor</name>
    <message>
        <source>Select a custom color</source>
        <translation>Eigene Farbe wählen</translation>
    </message>
</context>
<context>
    <name>NVGradientToolbar</name>
    <message>
        <source>Linear gradient</source>
        <translation>Linearverlauf</translation>
    </message>
    <message>
        <source>Circular gradient</source>
        <translation>Kreisverlauf</translation>
    </message>
    <message>
        <source>Diamond gradient</source>
        <translation>Rautenverlauf</translation>
    </message>
    <message>
        <source>Angle gradient</source>
        <translation>Winkelverlauf</translation>
    </message>
</context>
<context>
    <name>NVImageSize</name>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
    <message>
        <source>percent</source>
        <translation>Prozent</translation>
    </message>
    <message>
        <source>Pixel dimensions: %1 (was %2)</source>
        <translation>Pixelmaße: %1 (vorher %2)</translation>
    </message>
    <message>
        <source>Pixel dimensions: %1</source>
        <translation>Pixelmaße: %1</translation>
    </message>
    <message>
        <source>Operation error</source>
        <translation>Fehler beim Vorgang</translation>
    </message>
    <message>
        <source>Cannot resize the image. Maximum dimension exceeded.
The width should be in the range of %1 - %2 pixels.
The height should be in the range of %3 - %4 pixels.</source>
        <translation>Die Bildgröße kann nicht geändert werden. Die größte zulässige Abmessung ist überschritten.
Die Breite muss zwischen %1 und %2 Pixeln liegen.
Die Höhe muss zwischen %3 und %4 Pixeln liegen.</translation>
    </message>
    <message>
        <source>Cannot resize the image. Maximum dimension exceeded.
The width should be in the range of %1 - %2 percents.
The height should be in the range of %3 - %4 percents.</source>
        <translation>Die Bildgröße kann nicht geändert werden. Die größte zulässige Abmessung ist überschritten.
Die Breite muss zwischen %1 und %2 Prozent liegen.
Die Höhe muss zwischen %3 und %4 Prozent liegen.</translation>
    </message>
    <message>
        <source>Cannot resize the image. Maximum dimension exceeded for the DPI value.
The width should be in the range of %1 - %2 inches.
The height should be in the range of %3 - %4 inches.</source>
        <translation>Die Bildgröße kann nicht geändert werden. Die größte zulässige Abmessung ist bei diesem DPI-Wert überschritten.
Die Breite muss zwischen %1 und %2 Zoll liegen.
Die Höhe muss zwischen %3 und %4 Zoll liegen.</translation>
    </message>
    <message>
        <source>Cannot resize the image. Maximum dimension exceeded for the DPI value.
The width should be in the range of %1 - %2 millimeters.
The height should be in the range of %3 - %4 millimeters.</source>
        <translation>Die Bildgröße kann nicht geändert werden. Die größte zulässige Abmessung ist bei diesem DPI-Wert überschritten.
Die Breite muss zwischen %1 und %2 Millimetern liegen.
Die Höhe muss zwischen %3 und %4 Millimetern liegen.</translation>
    </message>
    <message>
        <source>%1 b</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 Kb</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 Mb</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 Gb</source>
        <translation>%1 GB</translation>
    </message>
</context>
<context>
    <name>NVIncompleteDocumentInfo</name>
    <message>
        <source>Save as</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Don&apos;t save</source>
        <translation>Nicht speichern</translation>
    </message>
</context>
<context>
    <name>NVMagicWandToolbar</name>
    <message>
        <source>Refine selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
</context>
<context>
    <name>NVMeasureUnit</name>
    <message>
        <source>inches</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>in</source>
        <comment>inches</comment>
        <translation>in</translation>
    </message>
    <message>
        <source>millimeters</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>mm</source>
        <comment>millimeters</comment>
        <translation>mm</translation>
    </message>
    <message>
        <source>centimeters</source>
        <translation>Zentimeter</translation>
    </message>
    <message>
        <source>cm</source>
        <comment>centimeters</comment>
        <translation>cm</translation>
    </message>
    <message>
        <source>points</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>pt</source>
        <comment>points, 72 in one inch</comment>
        <translation>pt</translation>
    </message>
    <message>
        <source>picas</source>
        <translation>Pica</translation>
    </message>
    <message>
        <source>pc</source>
        <comment>picas, 6 in one inch</comment>
        <translation>pc</translation>
    </message>
</context>
<context>
    <name>NVNavigatorPanel</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
</context>
<context>
    <name>NVPrintPreviewDialog</name>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
</context>
<context>
    <name>NVSelectColorRange</name>
    <message>
        <source>Choose a color</source>
        <translation>Farbe wählen</translation>
    </message>
</context>
<context>
    <name>NVSelectionToolbar</name>
    <message>
        <source>Refine selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
</context>
<context>
    <name>NVTextToolbar</name>
    <message>
        <source>Selecte a text color</source>
        <translation>Textfarbe wählen</translation>
    </message>
</context>
<context>
    <name>NVWarpTextDialog</name>
    <message>
        <source>None</source>
        <translation>Ohne</translation>
    </message>
    <message>
        <source>Flag</source>
        <translation>Flagge</translation>
    </message>
</context>
<context>
    <name>Navigator</name>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Loupe</source>
        <translation>Lupe</translation>
    </message>
    <message>
        <source>Grid type:</source>
        <translation>Rastertyp:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ohne</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Lighten</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <source>Channel:</source>
        <translation>Kanal:</translation>
    </message>
    <message>
        <source>Select a channel for input signal</source>
        <translation>Kanal des Eingangssignals wählen</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>Luminance</source>
        <translation>Luminanz</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Red + Green</source>
        <translation>Rot + Grün</translation>
    </message>
    <message>
        <source>Red + Blue</source>
        <translation>Rot + Blau</translation>
    </message>
    <message>
        <source>Green + Blue</source>
        <translation>Grün + Blau</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Level:</source>
        <translation>Tonwert:</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Tonwert</translation>
    </message>
    <message>
        <source>View:</source>
        <translation>Ansicht:</translation>
    </message>
    <message>
        <source>8-bit</source>
        <translation>8 Bit</translation>
    </message>
    <message>
        <source>Pixels:</source>
        <translation>Pixel:</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Count:</source>
        <translation>Anzahl:</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
</context>
<context>
    <name>PatternSelectWidget</name>
    <message>
        <source>Textures</source>
        <translation>Texturen</translation>
    </message>
</context>
<context>
    <name>PatternTileView</name>
    <message>
        <source>Textures</source>
        <translation>Texturen</translation>
    </message>
</context>
<context>
    <name>PatternTiles</name>
    <message>
        <source>Checkerboard</source>
        <translation>Schachbrett</translation>
    </message>
    <message>
        <source>Stripes</source>
        <translation>Streifen</translation>
    </message>
    <message>
        <source>Diagonal stripes</source>
        <translation>Diagonalstreifen</translation>
    </message>
    <message>
        <source>Crosshatch</source>
        <translation>Kreuzschraffur</translation>
    </message>
    <message>
        <source>Dots</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Rings</source>
        <translation>Ringe</translation>
    </message>
    <message>
        <source>Zigzag</source>
        <translation>Zickzack</translation>
    </message>
    <message>
        <source>Waves</source>
        <translation>Wellen</translation>
    </message>
    <message>
        <source>Hexagons</source>
        <translation>Sechsecke</translation>
    </message>
    <message>
        <source>Triangles</source>
        <translation>Dreiecke</translation>
    </message>
    <message>
        <source>Scales</source>
        <translation>Schuppen</translation>
    </message>
    <message>
        <source>Plaid</source>
        <translation>Karo</translation>
    </message>
    <message>
        <source>Diamonds</source>
        <translation>Rauten</translation>
    </message>
    <message>
        <source>Bricks</source>
        <translation>Ziegel</translation>
    </message>
    <message>
        <source>Cobbles</source>
        <translation>Pflastersteine</translation>
    </message>
    <message>
        <source>Crackle</source>
        <translation>Risse</translation>
    </message>
    <message>
        <source>Canvas</source>
        <translation>Leinwand</translation>
    </message>
    <message>
        <source>Linen</source>
        <translation>Leinen</translation>
    </message>
    <message>
        <source>Basket</source>
        <translation>Korbgeflecht</translation>
    </message>
    <message>
        <source>Wood</source>
        <translation>Holz</translation>
    </message>
    <message>
        <source>Marble</source>
        <translation>Marmor</translation>
    </message>
    <message>
        <source>Clouds</source>
        <translation>Wolken</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>Papier</translation>
    </message>
    <message>
        <source>Film grain</source>
        <translation>Filmkorn</translation>
    </message>
</context>
<context>
    <name>PresetNameDialog</name>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>There is a preset of this name already.</source>
        <translation>Eine Vorgabe mit diesem Namen gibt es bereits.</translation>
    </message>
</context>
<context>
    <name>PrintPreview</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Printer:</source>
        <translation>Drucker:</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Width:</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>Height:</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>in</source>
        <translation>in</translation>
    </message>
    <message>
        <source>pica</source>
        <translation>Pica</translation>
    </message>
    <message>
        <source>DPI:</source>
        <translation>DPI:</translation>
    </message>
    <message>
        <source>Orientation:</source>
        <translation>Ausrichtung:</translation>
    </message>
    <message>
        <source>Portrait</source>
        <translation>Hochformat</translation>
    </message>
    <message>
        <source>Landscape</source>
        <translation>Querformat</translation>
    </message>
    <message>
        <source>Margins:</source>
        <translation>Ränder:</translation>
    </message>
    <message>
        <source>Top margin</source>
        <translation>Oberer Rand</translation>
    </message>
    <message>
        <source>Left margin</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Right margin</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Bottom margin</source>
        <translation>Unterer Rand</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skalierung</translation>
    </message>
    <message>
        <source>Keep ratio</source>
        <translation>Proportional</translation>
    </message>
    <message>
        <source>Don&apos;t scale</source>
        <translation>Nicht skalieren</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigene Werte</translation>
    </message>
    <message>
        <source>Fit to page</source>
        <translation>An Seite anpassen</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Offset:</source>
        <translation>Versatz:</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Rotate:</source>
        <translation>Drehen:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>90 ° CW</source>
        <translation>90 ° rechts</translation>
    </message>
    <message>
        <source>90 ° CCW</source>
        <translation>90 ° links</translation>
    </message>
    <message>
        <source>180 °</source>
        <translation>180 °</translation>
    </message>
    <message>
        <source>Copies:</source>
        <translation>Exemplare:</translation>
    </message>
    <message>
        <source>Scale:</source>
        <translation>Skalierung:</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Fit on screen</source>
        <translation>An Bildschirm anpassen</translation>
    </message>
    <message>
        <source>Actual size</source>
        <translation>Originalgröße</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
</context>
<context>
    <name>RedEye</name>
    <message>
        <source>Red eye toolbar</source>
        <translation>Optionsleiste Rote Augen</translation>
    </message>
    <message>
        <source>Level:</source>
        <translation>Stärke:</translation>
    </message>
</context>
<context>
    <name>RulerToolBar</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>x1:</source>
        <translation>x1:</translation>
    </message>
    <message>
        <source>y1:</source>
        <translation>y1:</translation>
    </message>
    <message>
        <source>x2:</source>
        <translation>x2:</translation>
    </message>
    <message>
        <source>y2:</source>
        <translation>y2:</translation>
    </message>
    <message>
        <source>Length:</source>
        <translation>Länge:</translation>
    </message>
    <message>
        <source>Angle:</source>
        <translation>Winkel:</translation>
    </message>
    <message>
        <source>Straighten and crop the image</source>
        <translation>Bild begradigen und zuschneiden</translation>
    </message>
    <message>
        <source>Straighten</source>
        <translation>Begradigen</translation>
    </message>
    <message>
        <source>Clear ruler points</source>
        <translation>Linealpunkte löschen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>SelectColorRange</name>
    <message>
        <source>Select color range</source>
        <translation>Farbbereich auswählen</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>R:</source>
        <translation>R:</translation>
    </message>
    <message>
        <source>G:</source>
        <translation>G:</translation>
    </message>
    <message>
        <source>B:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>Choose a color</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>Remove the selected color</source>
        <translation>Ausgewählte Farbe entfernen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove all colors</source>
        <translation>Alle Farben entfernen</translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Toleranz:</translation>
    </message>
    <message>
        <source>Tolerance</source>
        <translation>Toleranz</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Mode: </source>
        <translation>Modus: </translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>create new</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>subtract</source>
        <translation>Subtrahieren</translation>
    </message>
    <message>
        <source>intersect</source>
        <translation>Schnittmenge</translation>
    </message>
</context>
<context>
    <name>SelectionToolbar</name>
    <message>
        <source>Selection toolbar</source>
        <translation>Optionsleiste Auswahl</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Unite</source>
        <translation>Vereinigen</translation>
    </message>
    <message>
        <source>Subtract</source>
        <translation>Subtrahieren</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Schnittmenge bilden</translation>
    </message>
    <message>
        <source>Radius:</source>
        <translation>Radius:</translation>
    </message>
    <message>
        <source>Corner radius</source>
        <translation>Eckenradius</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Weiche Kante:</translation>
    </message>
    <message>
        <source>Autoscroll during selection</source>
        <translation>Beim Auswählen automatisch mitscrollen</translation>
    </message>
    <message>
        <source>Autoscroll</source>
        <translation>Mitscrollen</translation>
    </message>
    <message>
        <source>Refine selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
</context>
<context>
    <name>SpotHealingToolBar</name>
    <message>
        <source>Spot healing toolbar</source>
        <translation>Optionsleiste Fleckenkorrektur</translation>
    </message>
    <message>
        <source>Click to open the Healing Brush Parameters Window</source>
        <translation>Klicken, um das Fenster mit den Parametern der Fleckenkorrektur zu öffnen</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
</context>
<context>
    <name>StampToolBar</name>
    <message>
        <source>Stamp toolbar</source>
        <translation>Optionsleiste Klonstempel</translation>
    </message>
    <message>
        <source>Click to open Stamp Parameters Window</source>
        <translation>Klicken, um das Fenster mit den Parametern des Klonstempels zu öffnen</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Spacing:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>%</source>
        <translation>%</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Opacity:</source>
        <translation>Deckkraft:</translation>
    </message>
    <message>
        <source>Painting mode</source>
        <translation>Malmodus</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Multiply</source>
        <translation>Multiplizieren</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Negativ multiplizieren</translation>
    </message>
    <message>
        <source>Overlay</source>
        <translation>Ineinanderkopieren</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Exclusion</source>
        <translation>Ausschluss</translation>
    </message>
    <message>
        <source>Lighten colors</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken colors</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Soft light</source>
        <translation>Weiches Licht</translation>
    </message>
    <message>
        <source>Hard light</source>
        <translation>Hartes Licht</translation>
    </message>
    <message>
        <source>Color dodge</source>
        <translation>Farbig abwedeln</translation>
    </message>
    <message>
        <source>Color burn</source>
        <translation>Farbig nachbelichten</translation>
    </message>
    <message>
        <source>Addition</source>
        <translation>Addieren</translation>
    </message>
    <message>
        <source> Clone all layers</source>
        <translation> Alle Ebenen klonen</translation>
    </message>
    <message>
        <source>Use same offset for each stroke</source>
        <translation>Für jeden Strich denselben Versatz verwenden</translation>
    </message>
    <message>
        <source>Aligned</source>
        <translation>Ausgerichtet</translation>
    </message>
</context>
<context>
    <name>StrokePreview</name>
    <message>
        <source>Stroke preview</source>
        <translation>Strichvorschau</translation>
    </message>
</context>
<context>
    <name>TextToolbar</name>
    <message>
        <source>Text toolbar</source>
        <translation>Optionsleiste Text</translation>
    </message>
    <message>
        <source>Font family</source>
        <translation>Schriftfamilie</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>B</source>
        <translation>F</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>I</source>
        <translation>K</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstrichen</translation>
    </message>
    <message>
        <source>U</source>
        <translation>U</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Schriftgröße</translation>
    </message>
    <message>
        <source>Anti-aliasing</source>
        <translation>Kanten glätten</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Warp text</source>
        <translation>Text verkrümmen</translation>
    </message>
    <message>
        <source>Warp</source>
        <translation>Verkrümmen</translation>
    </message>
    <message>
        <source>Apply changes</source>
        <translation>Änderungen anwenden</translation>
    </message>
    <message>
        <source>Cancel changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
</context>
<context>
    <name>TransformToolBar</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Set reference point location</source>
        <translation>Lage des Bezugspunkts festlegen</translation>
    </message>
    <message>
        <source>Horizontal position of reference point</source>
        <translation>Horizontale Position des Bezugspunkts</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Set horizontal position</source>
        <translation>Horizontale Position festlegen</translation>
    </message>
    <message>
        <source>Vertical position of reference point</source>
        <translation>Vertikale Position des Bezugspunkts</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>Set vertical position</source>
        <translation>Vertikale Position festlegen</translation>
    </message>
    <message>
        <source>Horizontal scale</source>
        <translation>Horizontale Skalierung</translation>
    </message>
    <message>
        <source>W:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>Set horizontal scale</source>
        <translation>Horizontale Skalierung festlegen</translation>
    </message>
    <message>
        <source>Vertical scale</source>
        <translation>Vertikale Skalierung</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>H:</translation>
    </message>
    <message>
        <source>Set vertical scale</source>
        <translation>Vertikale Skalierung festlegen</translation>
    </message>
    <message>
        <source>Maintain aspect ratio</source>
        <translation>Seitenverhältnis beibehalten</translation>
    </message>
    <message>
        <source>Rotation angle</source>
        <translation>Drehwinkel</translation>
    </message>
    <message>
        <source>A:</source>
        <translation>W:</translation>
    </message>
    <message>
        <source>Set rotation</source>
        <translation>Drehung festlegen</translation>
    </message>
    <message>
        <source>Horizontal skew</source>
        <translation>Horizontale Neigung</translation>
    </message>
    <message>
        <source>Set horizontal skew</source>
        <translation>Horizontale Neigung festlegen</translation>
    </message>
    <message>
        <source>Vertical skew</source>
        <translation>Vertikale Neigung</translation>
    </message>
    <message>
        <source>V:</source>
        <translation>V:</translation>
    </message>
    <message>
        <source>Set vertical skew</source>
        <translation>Vertikale Neigung festlegen</translation>
    </message>
    <message>
        <source>Apply the transformation</source>
        <translation>Transformation anwenden</translation>
    </message>
    <message>
        <source>Cancel the transformation</source>
        <translation>Transformation abbrechen</translation>
    </message>
</context>
<context>
    <name>TransformationCenterPointControl</name>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Top center</source>
        <translation>Oben Mitte</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Mitte links</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Mitte rechts</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Bottom center</source>
        <translation>Unten Mitte</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
</context>
<context>
    <name>WarpText</name>
    <message>
        <source>Warp text</source>
        <translation>Text verkrümmen</translation>
    </message>
    <message>
        <source>Style:</source>
        <translation>Stil:</translation>
    </message>
    <message>
        <source>Use horizontal deformation</source>
        <translation>Horizontale Verformung verwenden</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Horizontal</translation>
    </message>
    <message>
        <source>Use vertical deformation</source>
        <translation>Vertikale Verformung verwenden</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Vertikal</translation>
    </message>
    <message>
        <source>Bending:</source>
        <translation>Biegung:</translation>
    </message>
    <message>
        <source>Bending</source>
        <translation>Biegung</translation>
    </message>
    <message>
        <source>Horizontal Distortion:</source>
        <translation>Horizontale Verzerrung:</translation>
    </message>
    <message>
        <source>Horizontal Distortion</source>
        <translation>Horizontale Verzerrung</translation>
    </message>
    <message>
        <source>Vertical Distortion:</source>
        <translation>Vertikale Verzerrung:</translation>
    </message>
    <message>
        <source>Vertical Distortion</source>
        <translation>Vertikale Verzerrung</translation>
    </message>
</context>
<context>
    <name>ZoomPanel</name>
    <message>
        <source>Zoom tool</source>
        <translation>Zoomwerkzeug</translation>
    </message>
    <message>
        <source>Zoom value:</source>
        <translation>Zoomfaktor:</translation>
    </message>
    <message>
        <source>Zoom value</source>
        <translation>Zoomfaktor</translation>
    </message>
    <message>
        <source> : 1</source>
        <translation> : 1</translation>
    </message>
    <message>
        <source>Grid type:</source>
        <translation>Rastertyp:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ohne</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Lighten</source>
        <translation>Aufhellen</translation>
    </message>
    <message>
        <source>Darken</source>
        <translation>Abdunkeln</translation>
    </message>
    <message>
        <source>Loupe</source>
        <translation>Lupe</translation>
    </message>
</context>
<context>
    <name>ZoomToolBar</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom current window to 1:1</source>
        <translation>Aktuelles Fenster auf 1:1 zoomen</translation>
    </message>
    <message>
        <source>Actual Pixels</source>
        <translation>Tatsächliche Pixel</translation>
    </message>
    <message>
        <source>Zoom current window to screen size</source>
        <translation>Aktuelles Fenster auf Bildschirmgröße zoomen</translation>
    </message>
    <message>
        <source>Fit screen</source>
        <translation>An Bildschirm anpassen</translation>
    </message>
</context>
</TS>
