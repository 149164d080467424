<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BatchFilterModel</name>
    <message>
        <source>1 image</source>
        <translation>1 Bild</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 Bilder</translation>
    </message>
</context>
<context>
    <name>BatchJob</name>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Nothing can be written to the folder %1.</source>
        <translation>In den Ordner %1 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>There is not enough memory for so many images.</source>
        <translation>Für so viele Bilder reicht der Speicher nicht.</translation>
    </message>
</context>
<context>
    <name>BatchJobPanel</name>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>&amp;Enlarge smaller images</source>
        <translation>&amp;Kleinere Bilder vergrößern</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>&amp;Keep the structure of folders</source>
        <translation>O&amp;rdnerstruktur beibehalten</translation>
    </message>
    <message>
        <source>Output Folder</source>
        <translation>Zielordner</translation>
    </message>
    <message>
        <source>Keep the size</source>
        <translation>Größe beibehalten</translation>
    </message>
    <message>
        <source>Fit within</source>
        <translation>Einpassen in</translation>
    </message>
    <message>
        <source>By percent</source>
        <translation>Nach Prozent</translation>
    </message>
    <message>
        <source>Greatest width</source>
        <translation>Größte Breite</translation>
    </message>
    <message>
        <source>Greatest height</source>
        <translation>Größte Höhe</translation>
    </message>
    <message>
        <source>by</source>
        <translation>mal</translation>
    </message>
    <message>
        <source>Not at all</source>
        <translation>Gar nicht</translation>
    </message>
    <message>
        <source>90° clockwise</source>
        <translation>90° im Uhrzeigersinn</translation>
    </message>
    <message>
        <source>180°</source>
        <translation>180°</translation>
    </message>
    <message>
        <source>90° counter-clockwise</source>
        <translation>90° gegen den Uhrzeigersinn</translation>
    </message>
    <message>
        <source>Resi&amp;ze:</source>
        <translation>&amp;Größe ändern:</translation>
    </message>
    <message>
        <source>&amp;Percent:</source>
        <translation>&amp;Prozent:</translation>
    </message>
    <message>
        <source>R&amp;otate:</source>
        <translation>Dre&amp;hen:</translation>
    </message>
    <message>
        <source>As the source</source>
        <translation>Wie Quelle</translation>
    </message>
    <message>
        <source>Images in a format that cannot be written become PNG.</source>
        <translation>Bilder in einem Format, das nicht geschrieben werden kann, werden zu PNG.</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner auswählen</translation>
    </message>
    <message>
        <source>&amp;Choose...</source>
        <translation>Aus&amp;wählen...</translation>
    </message>
    <message>
        <source>Choose the output folder</source>
        <translation>Zielordner auswählen</translation>
    </message>
    <message>
        <source>Sources and other files are never overwritten: where a name is taken, a number is added to it.</source>
        <translation>Quellen und andere Dateien werden nie überschrieben: Ist ein Name vergeben, wird eine Nummer angehängt.</translation>
    </message>
    <message>
        <source>For&amp;mat:</source>
        <translation>For&amp;mat:</translation>
    </message>
    <message>
        <source>O&amp;utput folder:</source>
        <translation>&amp;Zielordner:</translation>
    </message>
</context>
<context>
    <name>BatchListPage</name>
    <message>
        <source>Cop&amp;y</source>
        <translation>Kop&amp;ieren</translation>
    </message>
    <message>
        <source>Sa&amp;ve As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>The chosen row in full</source>
        <translation>Die ausgewählte Zeile in voller Länge</translation>
    </message>
</context>
<context>
    <name>BatchReport</name>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation>Übersprungen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>The job did not begin: %1</source>
        <translation>Der Auftrag wurde nicht begonnen: %1</translation>
    </message>
    <message>
        <source>%1 done, %2 skipped, %3 failed</source>
        <translation>%1 fertig, %2 übersprungen, %3 fehlgeschlagen</translation>
    </message>
    <message>
        <source>Cancelled: %1</source>
        <translation>Abgebrochen: %1</translation>
    </message>
    <message>
        <source>%1 in %2</source>
        <translation>%1 in %2</translation>
    </message>
</context>
<context>
    <name>BatchTreeView</name>
    <message>
        <source>Folders and images</source>
        <translation>Ordner und Bilder</translation>
    </message>
</context>
<context>
    <name>BatchWindow</name>
    <message>
        <source>Batch</source>
        <translation>Stapelverarbeitung</translation>
    </message>
    <message>
        <source>Add files and folders, or drop them here.</source>
        <translation>Dateien und Ordner hinzufügen oder hier ablegen.</translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Took 1 image off the list.</source>
        <translation>1 Bild wurde aus der Liste entfernt.</translation>
    </message>
    <message>
        <source>Took %1 images off the list.</source>
        <translation>%1 Bilder wurden aus der Liste entfernt.</translation>
    </message>
    <message>
        <source>1 image</source>
        <translation>1 Bild</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 Bilder</translation>
    </message>
    <message>
        <source>1 folder</source>
        <translation>1 Ordner</translation>
    </message>
    <message>
        <source>%1 folders</source>
        <translation>%1 Ordner</translation>
    </message>
    <message>
        <source>%1 shown</source>
        <translation>%1 angezeigt</translation>
    </message>
    <message>
        <source>%1 of %2 images are done.</source>
        <translation>%1 von %2 Bildern sind fertig.</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>report.txt</source>
        <translation>Bericht.txt</translation>
    </message>
    <message>
        <source>left-out.txt</source>
        <translation>Ausgelassen.txt</translation>
    </message>
    <message>
        <source>Saved %1.</source>
        <translation>%1 wurde gespeichert.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be saved: %2</source>
        <translation>„%1“ konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Add &amp;Files...</source>
        <translation>&amp;Dateien hinzufügen...</translation>
    </message>
    <message>
        <source>Add images</source>
        <translation>Bilder hinzufügen</translation>
    </message>
    <message>
        <source>A&amp;dd Folder...</source>
        <translation>&amp;Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>Add a folder with all that is below it</source>
        <translation>Einen Ordner mit allem, was darin liegt, hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Take the selected rows off the list; no file is touched</source>
        <translation>Die ausgewählten Zeilen aus der Liste entfernen; die Dateien selbst bleiben unberührt</translation>
    </message>
    <message>
        <source>Refres&amp;h</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>Look at the selected rows again, or at all, and scan folders that have changed</source>
        <translation>Die ausgewählten oder alle Zeilen erneut prüfen und geänderte Ordner einlesen</translation>
    </message>
    <message>
        <source>Resca&amp;n</source>
        <translation>&amp;Neu einlesen</translation>
    </message>
    <message>
        <source>Look at the selected rows again, or at all, and scan all their folders</source>
        <translation>Die ausgewählten oder alle Zeilen erneut prüfen und alle ihre Ordner einlesen</translation>
    </message>
    <message>
        <source>Part of a name</source>
        <translation>Teil eines Namens</translation>
    </message>
    <message>
        <source>F&amp;ilter:</source>
        <translation>&amp;Filter:</translation>
    </message>
    <message>
        <source>Job and lists</source>
        <translation>Auftrag und Listen</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Warum</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Written to, or why not</source>
        <translation>Ziel oder Grund</translation>
    </message>
    <message>
        <source>&amp;Job</source>
        <translation>Auf&amp;trag</translation>
    </message>
    <message>
        <source>Repor&amp;t</source>
        <translation>&amp;Bericht</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>C&amp;ancel</source>
        <translation>Abbre&amp;chen</translation>
    </message>
    <message>
        <source>End what is running</source>
        <translation>Den laufenden Vorgang beenden</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>Run the job on all images of the list</source>
        <translation>Den Auftrag für alle Bilder der Liste ausführen</translation>
    </message>
    <message>
        <source>The scan has left out nothing.</source>
        <translation>Beim Einlesen wurde nichts ausgelassen.</translation>
    </message>
    <message>
        <source>The scan has left out something in 1 place.</source>
        <translation>Beim Einlesen wurde an 1 Stelle etwas ausgelassen.</translation>
    </message>
    <message>
        <source>The scan has left out something in %1 places.</source>
        <translation>Beim Einlesen wurde an %1 Stellen etwas ausgelassen.</translation>
    </message>
    <message>
        <source>&amp;Left Out</source>
        <translation>Ausge&amp;lassen</translation>
    </message>
    <message>
        <source>&amp;Left Out (%L1)</source>
        <translation>Ausge&amp;lassen (%L1)</translation>
    </message>
    <message>
        <source>No job has run yet.</source>
        <translation>Es wurde noch kein Auftrag ausgeführt.</translation>
    </message>
    <message>
        <source>The job is still running.

End it? What is done stays.</source>
        <translation>Der Auftrag läuft noch.

Soll er beendet werden? Was fertig ist, bleibt erhalten.</translation>
    </message>
    <message>
        <source>Cancelled. Nothing was changed.</source>
        <translation>Abgebrochen. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Scanning...</source>
        <translation>Einlesen...</translation>
    </message>
    <message>
        <source>Looking through 1 folder...</source>
        <translation>1 Ordner wird durchsucht...</translation>
    </message>
    <message>
        <source>Looking through %1 folders...</source>
        <translation>%1 Ordner werden durchsucht...</translation>
    </message>
    <message>
        <source>%1 leads back to %2</source>
        <translation>%1 führt zurück zu %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Links That Lead Back</source>
        <translation>Zurückführende Verknüpfungen</translation>
    </message>
    <message>
        <source>Links in these folders lead back into them. A scan that follows the links finds the same images again and again, and may not end by itself.

%1</source>
        <translation>Verknüpfungen in diesen Ordnern führen in sie zurück. Folgt das Einlesen den Verknüpfungen, findet es dieselben Bilder immer wieder und endet möglicherweise nicht von selbst.

%1</translation>
    </message>
    <message>
        <source>&amp;Leave Links Out</source>
        <translation>Verknüpfungen &amp;auslassen</translation>
    </message>
    <message>
        <source>&amp;Follow Links</source>
        <translation>Verknüpfungen &amp;folgen</translation>
    </message>
    <message>
        <source>Cancelled. What was refreshed before that stays.</source>
        <translation>Abgebrochen. Was bis dahin aktualisiert wurde, bleibt erhalten.</translation>
    </message>
    <message>
        <source>1 image less than before.</source>
        <translation>1 Bild weniger als zuvor.</translation>
    </message>
    <message>
        <source>%1 images less than before.</source>
        <translation>%1 Bilder weniger als zuvor.</translation>
    </message>
    <message>
        <source>1 new image.</source>
        <translation>1 neues Bild.</translation>
    </message>
    <message>
        <source>%1 new images.</source>
        <translation>%1 neue Bilder.</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und weitere</translation>
    </message>
    <message>
        <source>As many images as before.</source>
        <translation>So viele Bilder wie zuvor.</translation>
    </message>
</context>
<context>
    <name>BatchWork</name>
    <message>
        <source>The job was cancelled.</source>
        <translation>Der Auftrag wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The result would be too large.</source>
        <translation>Das Ergebnis wäre zu groß.</translation>
    </message>
    <message>
        <source>The folder %1 could not be made.</source>
        <translation>Der Ordner %1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>It does not exist any more.</source>
        <translation>Nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>There is not enough memory for it.</source>
        <translation>Der Speicher reicht dafür nicht aus.</translation>
    </message>
</context>
<context>
    <name>BlurTool</name>
    <message>
        <source>Blur</source>
        <translation>Weichzeichner</translation>
    </message>
</context>
<context>
    <name>BrushDock</name>
    <message>
        <source>Brush</source>
        <translation>Pinsel</translation>
    </message>
</context>
<context>
    <name>BrushTool</name>
    <message>
        <source>Brush</source>
        <translation>Pinsel</translation>
    </message>
    <message>
        <source>Brush Stroke</source>
        <translation>Pinselstrich</translation>
    </message>
    <message>
        <source>Move the pointer over the picture to pick a colour there.</source>
        <translation>Bewegen Sie den Zeiger über das Bild, um dort eine Farbe aufzunehmen.</translation>
    </message>
    <message>
        <source>Picked the colour %1.</source>
        <translation>Die Farbe %1 wurde aufgenommen.</translation>
    </message>
</context>
<context>
    <name>ColorPickerTool</name>
    <message>
        <source>Colour Picker</source>
        <translation>Farbpipette</translation>
    </message>
    <message>
        <source>Here all is transparent: there is no colour to pick.</source>
        <translation>Hier ist alles transparent: Es gibt keine Farbe aufzunehmen.</translation>
    </message>
</context>
<context>
    <name>ColorRangeDock</name>
    <message>
        <source>Select Colour Range</source>
        <translation>Farbbereich auswählen</translation>
    </message>
    <message>
        <source>The strip is full: remove colours to add others.</source>
        <translation>Der Streifen ist voll: Entfernen Sie Farben, um andere hinzuzufügen.</translation>
    </message>
    <message>
        <source>No colour of the strip is like that one.</source>
        <translation>Keine Farbe des Streifens ist dieser ähnlich.</translation>
    </message>
</context>
<context>
    <name>ColorRangeMenu</name>
    <message>
        <source>&amp;Colour Range...</source>
        <translation>&amp;Farbbereich...</translation>
    </message>
    <message>
        <source>Click on colours of the picture to select what is like them; Alt takes one out.</source>
        <translation>Klicken Sie auf Farben des Bilds, um ähnliche auszuwählen; mit Alt wird eine entfernt.</translation>
    </message>
    <message>
        <source>Selecting the colours</source>
        <translation>Farben werden ausgewählt</translation>
    </message>
    <message>
        <source>Cancelled: the selection is as it was.</source>
        <translation>Abgebrochen: Die Auswahl ist unverändert.</translation>
    </message>
    <message>
        <source>Colour Range</source>
        <translation>Farbbereich</translation>
    </message>
    <message>
        <source>The selection is as it was.</source>
        <translation>Die Auswahl ist unverändert.</translation>
    </message>
    <message>
        <source>Nothing is selected: no pixel is left that is like these colours.</source>
        <translation>Nichts ist ausgewählt: Es bleibt kein Pixel, das diesen Farben ähnlich ist.</translation>
    </message>
</context>
<context>
    <name>ColorReadOut</name>
    <message>
        <source>R: %1  G: %2  B: %3  %4</source>
        <translation>R: %1  G: %2  B: %3  %4</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>ColorSampleDock</name>
    <message>
        <source>Colour Samples</source>
        <translation>Farbaufnahmen</translation>
    </message>
    <message>
        <source>&amp;Delete Sample</source>
        <translation>Farbaufnahme &amp;löschen</translation>
    </message>
    <message>
        <source>Delete &amp;All Samples</source>
        <translation>&amp;Alle Farbaufnahmen löschen</translation>
    </message>
    <message>
        <source>Delete Colour Sample</source>
        <translation>Farbaufnahme löschen</translation>
    </message>
    <message>
        <source>Delete All Colour Samples</source>
        <translation>Alle Farbaufnahmen löschen</translation>
    </message>
</context>
<context>
    <name>ColorSampleModel</name>
    <message>
        <source>X: %1  Y: %2</source>
        <translation>X: %1  Y: %2</translation>
    </message>
    <message>
        <source>outside of the picture</source>
        <translation>außerhalb des Bilds</translation>
    </message>
    <message>
        <source>Sample %1, %2, %3</source>
        <translation>Farbaufnahme %1, %2, %3</translation>
    </message>
</context>
<context>
    <name>ColorSamplerTool</name>
    <message>
        <source>Colour Sampler</source>
        <translation>Farbaufnahme</translation>
    </message>
    <message>
        <source>Add Colour Sample</source>
        <translation>Farbaufnahme hinzufügen</translation>
    </message>
    <message>
        <source>Move Colour Sample</source>
        <translation>Farbaufnahme verschieben</translation>
    </message>
    <message>
        <source>Delete Colour Sample</source>
        <translation>Farbaufnahme löschen</translation>
    </message>
    <message>
        <source>There are %1 samples, as many as there can be: delete one first.</source>
        <translation>Es gibt bereits %1 Farbaufnahmen, mehr sind nicht möglich: Löschen Sie zuerst eine.</translation>
    </message>
    <message>
        <source>Delete All Colour Samples</source>
        <translation>Alle Farbaufnahmen löschen</translation>
    </message>
</context>
<context>
    <name>ColorSwatches</name>
    <message>
        <source>Background colour</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Swap colours (X)</source>
        <translation>Farben tauschen (X)</translation>
    </message>
    <message>
        <source>Default colours (D)</source>
        <translation>Standardfarben (D)</translation>
    </message>
    <message>
        <source>Foreground Colour</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Background Colour</source>
        <translation>Hintergrundfarbe</translation>
    </message>
</context>
<context>
    <name>ContentTool</name>
    <message>
        <source>There is nothing on this layer.</source>
        <translation>Auf dieser Ebene ist nichts.</translation>
    </message>
    <message>
        <source>The selection holds nothing of this layer.</source>
        <translation>Die Auswahl enthält nichts von dieser Ebene.</translation>
    </message>
    <message>
        <source>The picture has changed: it was taken back.</source>
        <translation>Das Bild hat sich geändert: Der Vorgang wurde verworfen.</translation>
    </message>
    <message>
        <source>That was not possible: the picture is as it was.</source>
        <translation>Das war nicht möglich: Das Bild ist unverändert.</translation>
    </message>
</context>
<context>
    <name>CropTool</name>
    <message>
        <source>%1 crop</source>
        <translation>%1 Zuschnitt</translation>
    </message>
    <message>
        <source>The crop was cancelled.</source>
        <translation>Das Zuschneiden wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Enter crops the picture, Escape takes the frame away, a drag outside turns it.</source>
        <translation>Eingabe schneidet das Bild zu, Esc entfernt den Rahmen, Ziehen außerhalb dreht ihn.</translation>
    </message>
    <message>
        <source>The frame holds the whole picture: there is nothing to crop.</source>
        <translation>Der Rahmen umfasst das ganze Bild: Es gibt nichts zuzuschneiden.</translation>
    </message>
    <message>
        <source>Norvane</source>
        <translation>Norvane</translation>
    </message>
    <message>
        <source>%1

The picture stays as it is.</source>
        <translation>%1

Das Bild bleibt unverändert.</translation>
    </message>
    <message>
        <source>The frame lies beside the picture: nothing would be left of it.</source>
        <translation>Der Rahmen liegt neben dem Bild: Es bliebe nichts davon übrig.</translation>
    </message>
    <message>
        <source>Cropping the picture</source>
        <translation>Bild wird zugeschnitten</translation>
    </message>
    <message>
        <source>Cancelled: the picture is as it was.</source>
        <translation>Abgebrochen: Das Bild ist unverändert.</translation>
    </message>
    <message>
        <source>There was not enough memory for the crop.</source>
        <translation>Der Speicher reichte zum Zuschneiden nicht aus.</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <source>Cut off what lies outside of the frame</source>
        <translation>Abschneiden, was außerhalb des Rahmens liegt</translation>
    </message>
    <message>
        <source>Keep the size of the picture, make what lies outside of the frame transparent, and keep each layer as it was in a hidden layer below it</source>
        <translation>Die Bildgröße beibehalten, alles außerhalb des Rahmens transparent machen und jede Ebene, wie sie war, in einer ausgeblendeten Ebene darunter aufbewahren</translation>
    </message>
</context>
<context>
    <name>DocumentFile</name>
    <message>
        <source>The file does not exist.</source>
        <translation>Die Datei existiert nicht.</translation>
    </message>
    <message>
        <source>It is a folder.</source>
        <translation>Es ist ein Ordner.</translation>
    </message>
    <message>
        <source>It is not a plain file, but a device, a pipe or a socket.</source>
        <translation>Es ist keine gewöhnliche Datei, sondern ein Gerät, eine Pipe oder ein Socket.</translation>
    </message>
    <message>
        <source>Permission to read it is missing.</source>
        <translation>Die Leseberechtigung fehlt.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>It is %1 by %2 pixels large, and no side may be longer than %3 pixels.</source>
        <translation>Das Bild ist %1 mal %2 Pixel groß; keine Seite darf länger als %3 Pixel sein.</translation>
    </message>
    <message>
        <source>It is not a picture in any of the known formats.</source>
        <translation>Es ist kein Bild in einem der bekannten Formate.</translation>
    </message>
    <message>
        <source>The picture is damaged or was cut short.</source>
        <translation>Das Bild ist beschädigt oder abgeschnitten.</translation>
    </message>
    <message>
        <source>The picture was cut short: the file ends before its last pixel.</source>
        <translation>Das Bild ist abgeschnitten: Die Datei endet vor dem letzten Pixel.</translation>
    </message>
    <message>
        <source>The name needs an ending that tells the format, such as .png.</source>
        <translation>Der Name braucht eine Endung, die das Format angibt, zum Beispiel .png.</translation>
    </message>
    <message>
        <source>No plugin writes files that end in &quot;.%1&quot;.</source>
        <translation>Kein Plugin schreibt Dateien mit der Endung „.%1“.</translation>
    </message>
    <message>
        <source>A folder has this name.</source>
        <translation>Ein Ordner trägt diesen Namen.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist.</source>
        <translation>Der Ordner %1 existiert nicht.</translation>
    </message>
    <message>
        <source>The picture could not be put into this format: %1</source>
        <translation>Das Bild konnte nicht in dieses Format umgewandelt werden: %1</translation>
    </message>
    <message>
        <source>There is not enough memory for it.</source>
        <translation>Der Speicher reicht dafür nicht aus.</translation>
    </message>
    <message>
        <source>There is not enough memory to write its %1 by %2 pixels.</source>
        <translation>Der Speicher reicht nicht aus, um die %1 mal %2 Pixel zu schreiben.</translation>
    </message>
    <message>
        <source>Pictures (%1);;All files (*)</source>
        <translation>Bilder (%1);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>PNG picture (*.png)</source>
        <translation>PNG-Bild (*.png)</translation>
    </message>
    <message>
        <source>JPEG picture (*.jpg *.jpeg)</source>
        <translation>JPEG-Bild (*.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>%1 picture (*.%2)</source>
        <translation>%1-Bild (*.%2)</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Canvas</source>
        <translation>Leinwand</translation>
    </message>
</context>
<context>
    <name>DodgeTool</name>
    <message>
        <source>Dodge</source>
        <translation>Abwedeln</translation>
    </message>
</context>
<context>
    <name>EraserTool</name>
    <message>
        <source>Eraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>Radieren</translation>
    </message>
</context>
<context>
    <name>FileTask</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
</context>
<context>
    <name>FillTool</name>
    <message>
        <source>Fill</source>
        <translation>Füllen</translation>
    </message>
    <message>
        <source>Filling was cancelled.</source>
        <translation>Das Füllen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The picture is being filled. Escape takes it back.</source>
        <translation>Das Bild wird gefüllt. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>FlattenCommand</name>
    <message>
        <source>Flatten Image</source>
        <translation>Auf eine Ebene reduzieren</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
</context>
<context>
    <name>FolderSurvey</name>
    <message>
        <source>%1 files of other types: %2</source>
        <translation>%1 Dateien anderer Typen: %2</translation>
    </message>
    <message>
        <source>no suffix</source>
        <translation>ohne Endung</translation>
    </message>
    <message>
        <source>It is of another type</source>
        <translation>Anderer Dateityp</translation>
    </message>
    <message>
        <source>It cannot be read</source>
        <translation>Nicht lesbar</translation>
    </message>
    <message>
        <source>It does not exist any more</source>
        <translation>Nicht mehr vorhanden</translation>
    </message>
    <message>
        <source>1 image vanished while it was scanned</source>
        <translation>1 Bild verschwand während des Einlesens</translation>
    </message>
    <message>
        <source>%1 images vanished while it was scanned</source>
        <translation>%1 Bilder verschwanden während des Einlesens</translation>
    </message>
    <message>
        <source>Leads back into %1</source>
        <translation>Führt zurück in %1</translation>
    </message>
    <message>
        <source>A link to nothing: %1</source>
        <translation>Eine Verknüpfung ins Leere: %1</translation>
    </message>
    <message>
        <source>It is hidden</source>
        <translation>Versteckt</translation>
    </message>
    <message>
        <source>A device, a pipe or a socket</source>
        <translation>Ein Gerät, eine Pipe oder ein Socket</translation>
    </message>
    <message>
        <source>The name holds bytes that are no text</source>
        <translation>Der Name enthält Bytes, die kein Text sind</translation>
    </message>
</context>
<context>
    <name>GradientFile</name>
    <message>
        <source>There is no such file.</source>
        <translation>Die Datei existiert nicht.</translation>
    </message>
    <message>
        <source>It is not a plain file.</source>
        <translation>Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>It is too large to be a file of gradients.</source>
        <translation>Die Datei ist zu groß für eine Verlaufsdatei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be read as a gradient.

%2</source>
        <translation>„%1“ konnte nicht als Verlauf gelesen werden.

%2</translation>
    </message>
    <message>
        <source>The name must end in .ggr or .svg.</source>
        <translation>Der Name muss auf .ggr oder .svg enden.</translation>
    </message>
    <message>
        <source>There is no gradient to write.</source>
        <translation>Es ist kein Verlauf zum Schreiben vorhanden.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be written.

%2</source>
        <translation>„%1“ konnte nicht geschrieben werden.

%2</translation>
    </message>
    <message>
        <source>Gradients (*.ggr *.svg);;All files (*)</source>
        <translation>Verläufe (*.ggr *.svg);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>SVG gradients, all of them (*.svg);;GGR gradient, the current one (*.ggr)</source>
        <translation>SVG-Verläufe, alle (*.svg);;GGR-Verlauf, der aktuelle (*.ggr)</translation>
    </message>
</context>
<context>
    <name>GradientLibrary</name>
    <message>
        <source>Ink to Paper</source>
        <translation>Tinte zu Papier</translation>
    </message>
    <message>
        <source>Shade</source>
        <translation>Schatten</translation>
    </message>
    <message>
        <source>Glow</source>
        <translation>Leuchten</translation>
    </message>
    <message>
        <source>Daybreak</source>
        <translation>Tagesanbruch</translation>
    </message>
    <message>
        <source>Deep Lagoon</source>
        <translation>Tiefe Lagune</translation>
    </message>
    <message>
        <source>Embers</source>
        <translation>Glut</translation>
    </message>
    <message>
        <source>Pine Ridge</source>
        <translation>Kiefernhang</translation>
    </message>
    <message>
        <source>Orchard</source>
        <translation>Obstgarten</translation>
    </message>
    <message>
        <source>Violet Hour</source>
        <translation>Violette Stunde</translation>
    </message>
    <message>
        <source>Frost</source>
        <translation>Frost</translation>
    </message>
    <message>
        <source>Full Circle</source>
        <translation>Farbkreis</translation>
    </message>
    <message>
        <source>Rain Arch</source>
        <translation>Regenbogen</translation>
    </message>
    <message>
        <source>Brass Tube</source>
        <translation>Messingrohr</translation>
    </message>
    <message>
        <source>Steel Tube</source>
        <translation>Stahlrohr</translation>
    </message>
    <message>
        <source>Horizon</source>
        <translation>Horizont</translation>
    </message>
    <message>
        <source>Two Halves</source>
        <translation>Zwei Hälften</translation>
    </message>
    <message>
        <source>Awning</source>
        <translation>Markise</translation>
    </message>
    <message>
        <source>Venetian Blind</source>
        <translation>Jalousie</translation>
    </message>
    <message>
        <source>Bull&apos;s Eye</source>
        <translation>Zielscheibe</translation>
    </message>
    <message>
        <source>Soap Film</source>
        <translation>Seifenhaut</translation>
    </message>
    <message>
        <source>Spotlight</source>
        <translation>Scheinwerfer</translation>
    </message>
    <message>
        <source>Vignette</source>
        <translation>Vignette</translation>
    </message>
    <message>
        <source>Sepia Wash</source>
        <translation>Sepiatönung</translation>
    </message>
    <message>
        <source>Neon Edge</source>
        <translation>Neonkante</translation>
    </message>
    <message>
        <source>Gradient %1</source>
        <translation>Verlauf %1</translation>
    </message>
    <message>
        <source>%1

The gradients are those of the program, and changes of them are not kept.</source>
        <translation>%1

Es werden die Verläufe des Programms verwendet; Änderungen daran bleiben nicht erhalten.</translation>
    </message>
    <message>
        <source>The stored gradients could not be read. The gradients are those of the program; what was stored is kept in &quot;%1&quot;.</source>
        <translation>Die gespeicherten Verläufe konnten nicht gelesen werden. Es werden die Verläufe des Programms verwendet; was gespeichert war, wird in „%1“ aufbewahrt.</translation>
    </message>
    <message>
        <source>The folder of &quot;%1&quot; could not be made.</source>
        <translation>Der Ordner von „%1“ konnte nicht angelegt werden.</translation>
    </message>
</context>
<context>
    <name>GradientMenu</name>
    <message>
        <source>&amp;Import Gradients...</source>
        <translation>Verläufe &amp;importieren...</translation>
    </message>
    <message>
        <source>&amp;Export Gradients...</source>
        <translation>Verläufe &amp;exportieren...</translation>
    </message>
    <message numerus="yes">
        <source>%n gradient(s) were imported.</source>
        <translation>
            <numerusform>%n Verlauf wurde importiert.</numerusform>
            <numerusform>%n Verläufe wurden importiert.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>And %n more.</source>
        <translation>
            <numerusform>Und %n weiterer Fehler.</numerusform>
            <numerusform>Und %n weitere Fehler.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n gradient(s) were written to %1.</source>
        <translation>
            <numerusform>%n Verlauf wurde in %1 geschrieben.</numerusform>
            <numerusform>%n Verläufe wurden in %1 geschrieben.</numerusform>
        </translation>
    </message>
    <message>
        <source>Import Gradients</source>
        <translation>Verläufe importieren</translation>
    </message>
    <message>
        <source>Export Gradients</source>
        <translation>Verläufe exportieren</translation>
    </message>
    <message>
        <source>gradients</source>
        <translation>Verläufe</translation>
    </message>
    <message>
        <source>Gradients</source>
        <translation>Verläufe</translation>
    </message>
</context>
<context>
    <name>GradientText</name>
    <message>
        <source>It does not say how many segments there are.</source>
        <translation>Die Datei gibt nicht an, wie viele Segmente es gibt.</translation>
    </message>
    <message>
        <source>It has too many segments: %1.</source>
        <translation>Die Datei hat zu viele Segmente: %1.</translation>
    </message>
    <message>
        <source>It ends too early.</source>
        <translation>Die Datei endet zu früh.</translation>
    </message>
    <message>
        <source>Line %1 is not a segment.</source>
        <translation>Zeile %1 ist kein Segment.</translation>
    </message>
    <message>
        <source>It ends before the end of the gradient.</source>
        <translation>Die Segmente enden vor dem Ende des Verlaufs.</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>It has more than %1 gradients.</source>
        <translation>Die Datei hat mehr als %1 Verläufe.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no place of a stop.</source>
        <translation>„%1“ ist keine Position eines Haltepunkts.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no colour.</source>
        <translation>„%1“ ist keine Farbe.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no opacity.</source>
        <translation>„%1“ ist keine Deckkraft.</translation>
    </message>
    <message>
        <source>A gradient has more than %1 stops.</source>
        <translation>Ein Verlauf hat mehr als %1 Haltepunkte.</translation>
    </message>
    <message>
        <source>There is no gradient in it.</source>
        <translation>Die Datei enthält keinen Verlauf.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Die Datei ist leer.</translation>
    </message>
    <message>
        <source>It is neither a GGR nor an SVG file.</source>
        <translation>Es ist weder eine GGR- noch eine SVG-Datei.</translation>
    </message>
</context>
<context>
    <name>GradientTool</name>
    <message>
        <source>The gradient is being drawn: %1 %. Escape takes it back.</source>
        <translation>Der Verlauf wird gezeichnet: %1 %. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Enter draws the gradient, Escape takes it back. Shift keeps to whole directions.</source>
        <translation>Eingabe zeichnet den Verlauf, Esc verwirft ihn. Umschalt hält feste Richtungen ein.</translation>
    </message>
    <message>
        <source>Gradient</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>The gradient was cancelled.</source>
        <translation>Der Verlauf wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Choose a gradient first.</source>
        <translation>Wählen Sie zuerst einen Verlauf aus.</translation>
    </message>
</context>
<context>
    <name>HandTool</name>
    <message>
        <source>Hand</source>
        <translation>Hand</translation>
    </message>
    <message>
        <source>Drag the picture to see another part of it.</source>
        <translation>Ziehen Sie das Bild, um einen anderen Teil davon zu sehen.</translation>
    </message>
</context>
<context>
    <name>HideAreaCommand</name>
    <message>
        <source>%1 before the crop</source>
        <translation>%1 vor dem Zuschneiden</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>Opened</source>
        <translation>Geöffnet</translation>
    </message>
    <message>
        <source>1 earlier step dropped</source>
        <translation>1 früherer Schritt verworfen</translation>
    </message>
    <message>
        <source>%1 earlier steps dropped</source>
        <translation>%1 frühere Schritte verworfen</translation>
    </message>
</context>
<context>
    <name>HistoryDock</name>
    <message>
        <source>History</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>The history is full: %1 (at most %2 steps and %3 MB).</source>
        <translation>Das Protokoll ist voll: %1 (höchstens %2 Schritte und %3 MB).</translation>
    </message>
    <message>
        <source>&amp;At most:</source>
        <translation>Höchs&amp;tens:</translation>
    </message>
    <message>
        <source>Steps and what they hold</source>
        <translation>Schritte und was sie belegen</translation>
    </message>
    <message>
        <source>Memory for steps</source>
        <translation>Speicher für Schritte</translation>
    </message>
    <message>
        <source>What the steps of a document may hold, in memory and in files: the oldest ones are dropped beyond that. The newest step and those that were undone stay, even if they hold more</source>
        <translation>Was die Schritte eines Dokuments belegen dürfen, im Speicher und in Dateien: Darüber hinaus werden die ältesten verworfen. Der neueste Schritt und rückgängig gemachte Schritte bleiben erhalten, auch wenn sie mehr belegen</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>1 step, %1</source>
        <translation>1 Schritt, %1</translation>
    </message>
    <message>
        <source>%1 steps, %2</source>
        <translation>%1 Schritte, %2</translation>
    </message>
</context>
<context>
    <name>ImageMenu</name>
    <message>
        <source>A picture of %1 by %2 pixels is too large: a side has %3 pixels at most.</source>
        <translation>Ein Bild von %1 mal %2 Pixeln ist zu groß: Eine Seite hat höchstens %3 Pixel.</translation>
    </message>
    <message>
        <source>&amp;Image Size...</source>
        <translation>&amp;Bildgröße...</translation>
    </message>
    <message>
        <source>&amp;Canvas Size...</source>
        <translation>&amp;Leinwandgröße...</translation>
    </message>
    <message>
        <source>&amp;Auto-crop...</source>
        <translation>&amp;Automatisch zuschneiden...</translation>
    </message>
    <message>
        <source>Image Size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Resampling the picture</source>
        <translation>Bild wird neu berechnet</translation>
    </message>
    <message>
        <source>Canvas Size</source>
        <translation>Leinwandgröße</translation>
    </message>
    <message>
        <source>Looking for the background</source>
        <translation>Hintergrund wird gesucht</translation>
    </message>
    <message>
        <source>The whole picture is background: nothing would be left of it.

It stays as it is.</source>
        <translation>Das ganze Bild ist Hintergrund: Es bliebe nichts davon übrig.

Es bleibt unverändert.</translation>
    </message>
    <message>
        <source>There is no background to cut off at these sides.</source>
        <translation>An diesen Seiten gibt es keinen Hintergrund zum Abschneiden.</translation>
    </message>
    <message>
        <source>Auto-crop</source>
        <translation>Automatisch zuschneiden</translation>
    </message>
    <message>
        <source>Changing the canvas</source>
        <translation>Leinwand wird geändert</translation>
    </message>
    <message>
        <source>Cancelled: the picture is as it was.</source>
        <translation>Abgebrochen: Das Bild ist unverändert.</translation>
    </message>
    <message>
        <source>%1

The picture stays as it is.</source>
        <translation>%1

Das Bild bleibt unverändert.</translation>
    </message>
    <message>
        <source>There was not enough memory for a picture of %1 by %2 pixels.

It stays as it is.</source>
        <translation>Der Speicher reichte für ein Bild von %1 mal %2 Pixeln nicht aus.

Das Bild bleibt unverändert.</translation>
    </message>
    <message>
        <source>Norvane</source>
        <translation>Norvane</translation>
    </message>
</context>
<context>
    <name>LayerCommand</name>
    <message>
        <source>New Layer</source>
        <translation>Neue Ebene</translation>
    </message>
    <message>
        <source>Duplicate Layer</source>
        <translation>Ebene duplizieren</translation>
    </message>
    <message>
        <source>Delete Layer</source>
        <translation>Ebene löschen</translation>
    </message>
    <message>
        <source>Show Layer</source>
        <translation>Ebene einblenden</translation>
    </message>
    <message>
        <source>Hide Layer</source>
        <translation>Ebene ausblenden</translation>
    </message>
    <message>
        <source>Layer %1</source>
        <translation>Ebene %1</translation>
    </message>
    <message>
        <source>%1 copy</source>
        <translation>%1 Kopie</translation>
    </message>
</context>
<context>
    <name>LayerMenu</name>
    <message>
        <source>&amp;New Layer</source>
        <translation>&amp;Neue Ebene</translation>
    </message>
    <message>
        <source>D&amp;uplicate Layer</source>
        <translation>Ebene &amp;duplizieren</translation>
    </message>
    <message>
        <source>&amp;Delete Layer</source>
        <translation>Ebene &amp;löschen</translation>
    </message>
    <message>
        <source>Layer &amp;Above</source>
        <translation>Ebene da&amp;rüber</translation>
    </message>
    <message>
        <source>Layer &amp;Below</source>
        <translation>Ebene darun&amp;ter</translation>
    </message>
    <message>
        <source>&amp;Hide Layer</source>
        <translation>Ebene &amp;ausblenden</translation>
    </message>
    <message>
        <source>&amp;Flatten Image</source>
        <translation>Au&amp;f eine Ebene reduzieren</translation>
    </message>
    <message>
        <source>%1 (hidden)</source>
        <translation>%1 (ausgeblendet)</translation>
    </message>
    <message>
        <source>&amp;Show Layer</source>
        <translation>Ebene &amp;einblenden</translation>
    </message>
</context>
<context>
    <name>LayerPrompt</name>
    <message>
        <source>As&amp;k about Layers When Saving</source>
        <translation>Beim Speichern nach &amp;Ebenen fragen</translation>
    </message>
</context>
<context>
    <name>LoupeDock</name>
    <message>
        <source>Loupe</source>
        <translation>Lupe</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>There is no picture: open one, or make a new one.</source>
        <translation>Es ist kein Bild da: Öffnen Sie eines oder legen Sie ein neues an.</translation>
    </message>
    <message>
        <source>Clear Layer</source>
        <translation>Ebene leeren</translation>
    </message>
    <message>
        <source>About Norvane</source>
        <translation>Über Norvane</translation>
    </message>
    <message>
        <source>Norvane %1

A small image editor.</source>
        <translation>Norvane %1

Ein kleiner Bildeditor.</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 x %2 px</source>
        <translation>%1 x %2 px</translation>
    </message>
    <message>
        <source>%1[*] - Norvane</source>
        <translation>%1[*] - Norvane</translation>
    </message>
    <message>
        <source>Norvane</source>
        <translation>Norvane</translation>
    </message>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be opened.

%2</source>
        <translation>„%1“ konnte nicht geöffnet werden.

%2</translation>
    </message>
    <message>
        <source>Opening was cancelled.</source>
        <translation>Das Öffnen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Beispiel</translation>
    </message>
    <message>
        <source>%1 was not saved. You will be asked again: not to save is never remembered.</source>
        <translation>%1 wurde nicht gespeichert. Sie werden wieder gefragt: „Nicht speichern“ wird nie gemerkt.</translation>
    </message>
    <message>
        <source>%1 was not saved.</source>
        <translation>%1 wurde nicht gespeichert.</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 wird gespeichert</translation>
    </message>
    <message>
        <source>Saving was cancelled.</source>
        <translation>Das Speichern wurde abgebrochen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be saved.

%2</source>
        <translation>„%1“ konnte nicht gespeichert werden.

%2</translation>
    </message>
    <message>
        <source>Saved %1.</source>
        <translation>%1 wurde gespeichert.</translation>
    </message>
    <message>
        <source>Unnamed</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not exist any more. It was taken out of the list of recent files.</source>
        <translation>„%1“ existiert nicht mehr. Der Eintrag wurde aus der Liste der zuletzt geöffneten Dateien entfernt.</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
    <message>
        <source>Unsaved Changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has changes that are not saved.

Save them before it is closed?</source>
        <translation>„%1“ hat Änderungen, die nicht gespeichert sind.

Sollen sie vor dem Schließen gespeichert werden?</translation>
    </message>
    <message>
        <source>&amp;Don&apos;t Save</source>
        <translation>&amp;Nicht speichern</translation>
    </message>
    <message>
        <source>Option Bar</source>
        <translation>Optionsleiste</translation>
    </message>
    <message>
        <source>Current layer</source>
        <translation>Aktuelle Ebene</translation>
    </message>
    <message>
        <source>Pointer position</source>
        <translation>Zeigerposition</translation>
    </message>
    <message>
        <source>Picture size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu...</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Batch...</source>
        <translation>S&amp;tapelverarbeitung...</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Clear Layer</source>
        <translation>&amp;Ebene leeren</translation>
    </message>
    <message>
        <source>&amp;Swap Colours</source>
        <translation>Farben &amp;tauschen</translation>
    </message>
    <message>
        <source>&amp;Default Colours</source>
        <translation>&amp;Standardfarben</translation>
    </message>
    <message>
        <source>&amp;Gradients</source>
        <translation>&amp;Verläufe</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>B&amp;ild</translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation>&amp;Ebene</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Auswahl</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>A&amp;nsicht</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>&amp;Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Ori&amp;ginal Size</source>
        <translation>&amp;Originalgröße</translation>
    </message>
    <message>
        <source>&amp;Fit in Window</source>
        <translation>In &amp;Fenster einpassen</translation>
    </message>
    <message>
        <source>Option &amp;Bar</source>
        <translation>Options&amp;leiste</translation>
    </message>
    <message>
        <source>B&amp;rush Panel</source>
        <translation>Bedienfeld &amp;Pinsel</translation>
    </message>
    <message>
        <source>&amp;Navigator Panel</source>
        <translation>Bedienfeld &amp;Navigator</translation>
    </message>
    <message>
        <source>Histor&amp;y Panel</source>
        <translation>Bedienfeld P&amp;rotokoll</translation>
    </message>
    <message>
        <source>Colour &amp;Samples Panel</source>
        <translation>Bedienfeld Farb&amp;aufnahmen</translation>
    </message>
    <message>
        <source>&amp;Loupe Panel</source>
        <translation>Bedienfeld L&amp;upe</translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation>&amp;Design</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;High Contrast</source>
        <translation>Hoher &amp;Kontrast</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Norvane</source>
        <translation>Ü&amp;ber Norvane</translation>
    </message>
</context>
<context>
    <name>MemoryRoom</name>
    <message>
        <source>A picture of %1 by %2 pixels needs %3 of memory, which is more than there is.</source>
        <translation>Ein Bild von %1 mal %2 Pixeln braucht %3 Speicher. So viel ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>A picture of %1 by %2 pixels in %4 layers needs %3 of memory, which is more than there is.</source>
        <translation>Ein Bild von %1 mal %2 Pixeln in %4 Ebenen braucht %3 Speicher. So viel ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>One more layer of %1 by %2 pixels needs %3 of memory, which is more than there is.</source>
        <translation>Eine weitere Ebene von %1 mal %2 Pixeln braucht %3 Speicher. So viel ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>There is not enough memory for the selection. It stays as it is.</source>
        <translation>Der Speicher reicht für die Auswahl nicht aus. Sie bleibt unverändert.</translation>
    </message>
</context>
<context>
    <name>MoveTool</name>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>The pixels are being moved: %1 %. Escape takes it back.</source>
        <translation>Die Pixel werden verschoben: %1 %. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>NavigatorDock</name>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
</context>
<context>
    <name>NewDocumentDialog</name>
    <message>
        <source>New Picture</source>
        <translation>Neues Bild</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Background colour</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Transparent</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Ground:</source>
        <translation>Hinter&amp;grund:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
</context>
<context>
    <name>OptionArea</name>
    <message>
        <source>Show the options further left</source>
        <translation>Die Optionen weiter links anzeigen</translation>
    </message>
    <message>
        <source>Show the options further right</source>
        <translation>Die Optionen weiter rechts anzeigen</translation>
    </message>
</context>
<context>
    <name>PrintMenu</name>
    <message>
        <source>The printer %1 offers no resolution to print with.</source>
        <translation>Der Drucker %1 bietet keine Auflösung an, in der gedruckt werden kann.</translation>
    </message>
    <message>
        <source>The margins leave no room on the page.</source>
        <translation>Die Ränder lassen auf der Seite keinen Platz.</translation>
    </message>
    <message>
        <source>The print server at %1 does not answer.</source>
        <translation>Der Druckserver unter %1 antwortet nicht.</translation>
    </message>
    <message>
        <source>There is no printer: no print server was found at %1.</source>
        <translation>Es gibt keinen Drucker: Unter %1 wurde kein Druckserver gefunden.</translation>
    </message>
    <message>
        <source>There is no printer: the print server at %1 knows none.</source>
        <translation>Es gibt keinen Drucker: Der Druckserver unter %1 kennt keinen.</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>&amp;Export as PDF...</source>
        <translation>Als &amp;PDF exportieren...</translation>
    </message>
    <message>
        <source>Exporting %1</source>
        <translation>%1 wird exportiert</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be exported.

%2</source>
        <translation>„%1“ konnte nicht exportiert werden.

%2</translation>
    </message>
    <message>
        <source>The export was cancelled.</source>
        <translation>Der Export wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Exported %1: %2.</source>
        <translation>%1 wurde exportiert: %2.</translation>
    </message>
    <message>
        <source>Asking the print server</source>
        <translation>Druckserver wird abgefragt</translation>
    </message>
    <message>
        <source>Nothing was printed.</source>
        <translation>Es wurde nichts gedruckt.</translation>
    </message>
    <message>
        <source>Export as PDF</source>
        <translation>Als PDF exportieren</translation>
    </message>
    <message>
        <source>PDF file (*.pdf)</source>
        <translation>PDF-Datei (*.pdf)</translation>
    </message>
    <message>
        <source>%1

Nothing was printed.</source>
        <translation>%1

Es wurde nichts gedruckt.</translation>
    </message>
    <message>
        <source>The print server was not asked to the end.</source>
        <translation>Der Druckserver wurde nicht zu Ende abgefragt.</translation>
    </message>
    <message>
        <source>The printer %1 is not there any more.</source>
        <translation>Der Drucker %1 ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Still sending to %1: %2.</source>
        <translation>Wird noch an %1 gesendet: %2.</translation>
    </message>
    <message>
        <source>%1 did not take the job: %2.</source>
        <translation>%1 hat den Druckauftrag nicht angenommen: %2.</translation>
    </message>
    <message>
        <source>%1 did not print the job: %2.</source>
        <translation>%1 hat den Druckauftrag nicht gedruckt: %2.</translation>
    </message>
    <message>
        <source>The print server does not tell whether %1 took the job: %2.</source>
        <translation>Der Druckserver teilt nicht mit, ob %1 den Druckauftrag angenommen hat: %2.</translation>
    </message>
    <message>
        <source>%1 is stopped, the job waits there: %2.</source>
        <translation>%1 ist angehalten, der Druckauftrag wartet dort: %2.</translation>
    </message>
    <message>
        <source>Sent to %1: %2.</source>
        <translation>An %1 gesendet: %2.</translation>
    </message>
    <message>
        <source>%1

Export the picture as a PDF file instead?</source>
        <translation>%1

Soll das Bild stattdessen als PDF-Datei exportiert werden?</translation>
    </message>
    <message>
        <source>Norvane</source>
        <translation>Norvane</translation>
    </message>
</context>
<context>
    <name>PrintPage</name>
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
        <source>A folder has this name.</source>
        <translation>Ein Ordner trägt diesen Namen.</translation>
    </message>
    <message>
        <source>It is not a plain file, but a device, a pipe or a socket.</source>
        <translation>Es ist keine gewöhnliche Datei, sondern ein Gerät, eine Pipe oder ein Socket.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist.</source>
        <translation>Der Ordner %1 existiert nicht.</translation>
    </message>
    <message>
        <source>%1, picture %2 x %3 %4, %5 pixels an inch</source>
        <translation>%1, Bild %2 x %3 %4, %5 Pixel pro Zoll</translation>
    </message>
    <message>
        <source>%1 x %2</source>
        <translation>%1 x %2</translation>
    </message>
    <message>
        <source>There is not enough memory for it.</source>
        <translation>Der Speicher reicht dafür nicht aus.</translation>
    </message>
    <message>
        <source>The margins leave no room on the page.</source>
        <translation>Die Ränder lassen auf der Seite keinen Platz.</translation>
    </message>
    <message>
        <source>The page could not be drawn.</source>
        <translation>Die Seite konnte nicht gezeichnet werden.</translation>
    </message>
</context>
<context>
    <name>RedEyeTool</name>
    <message>
        <source>Red Eye</source>
        <translation>Rote Augen</translation>
    </message>
    <message>
        <source>There is nothing red enough here. A higher level takes paler reds.</source>
        <translation>Hier ist nichts rot genug. Eine höhere Stärke erfasst blassere Rottöne.</translation>
    </message>
    <message>
        <source>Remove Red Eye</source>
        <translation>Rote Augen entfernen</translation>
    </message>
</context>
<context>
    <name>RefineDialog</name>
    <message>
        <source>Refine Selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
    <message>
        <source>&amp;Smooth:</source>
        <translation>&amp;Glätten:</translation>
    </message>
    <message>
        <source>&amp;Grow:</source>
        <translation>&amp;Erweitern:</translation>
    </message>
    <message>
        <source>S&amp;hrink:</source>
        <translation>&amp;Verkleinern:</translation>
    </message>
    <message>
        <source>&amp;Feather:</source>
        <translation>&amp;Weiche Kante:</translation>
    </message>
    <message>
        <source>Nothing would be left of the selection.</source>
        <translation>Von der Auswahl bliebe nichts übrig.</translation>
    </message>
    <message>
        <source>The selection is being refined.</source>
        <translation>Die Auswahl wird verfeinert.</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>The line on the picture shows what will be selected.</source>
        <translation>Die Linie auf dem Bild zeigt, was ausgewählt wird.</translation>
    </message>
</context>
<context>
    <name>RulerTool</name>
    <message>
        <source>%1°</source>
        <translation>%1°</translation>
    </message>
    <message>
        <source>Ruler</source>
        <translation>Lineal</translation>
    </message>
    <message>
        <source>Straightening was cancelled: the picture is as it was.</source>
        <translation>Das Ausrichten wurde abgebrochen: Das Bild ist unverändert.</translation>
    </message>
    <message>
        <source>The line is straight already.</source>
        <translation>Die Linie ist bereits gerade.</translation>
    </message>
    <message>
        <source>There was not enough memory to straighten the picture. It stays as it is.</source>
        <translation>Der Speicher reichte nicht aus, um das Bild gerade auszurichten. Es bleibt unverändert.</translation>
    </message>
    <message>
        <source>Straighten</source>
        <translation>Begradigen</translation>
    </message>
    <message>
        <source>The picture is being straightened. Escape takes it back.</source>
        <translation>Das Bild wird gerade ausgerichtet. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>SelectMenu</name>
    <message>
        <source>&amp;All</source>
        <translation>&amp;Alles</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Nichts</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>&amp;Umkehren</translation>
    </message>
    <message>
        <source>&amp;Refine Selection...</source>
        <translation>Auswahl &amp;verfeinern...</translation>
    </message>
    <message>
        <source>Clear S&amp;election</source>
        <translation>Auswahlinhalt &amp;löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>Auswahl umkehren</translation>
    </message>
    <message>
        <source>Refine Selection</source>
        <translation>Auswahl verfeinern</translation>
    </message>
    <message>
        <source>The layer &quot;%1&quot; is hidden: show it to work on it.</source>
        <translation>Die Ebene „%1“ ist ausgeblendet: Blenden Sie sie ein, um sie zu bearbeiten.</translation>
    </message>
    <message>
        <source>Clear Selection</source>
        <translation>Auswahlinhalt löschen</translation>
    </message>
</context>
<context>
    <name>SelectionTool</name>
    <message>
        <source>Elliptic Selection</source>
        <translation>Ellipsenauswahl</translation>
    </message>
    <message>
        <source>Rectangular Selection</source>
        <translation>Rechteckauswahl</translation>
    </message>
    <message>
        <source>%1 x %2 px</source>
        <translation>%1 x %2 px</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>No pixel is selected by half or more: the outline cannot be seen.</source>
        <translation>Kein Pixel ist mindestens zur Hälfte ausgewählt: Der Umriss ist nicht zu sehen.</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>Auswahl verschieben</translation>
    </message>
</context>
<context>
    <name>SpotHealingTool</name>
    <message>
        <source>Spot Healing</source>
        <translation>Fleckenkorrektur</translation>
    </message>
    <message>
        <source>Healing was cancelled.</source>
        <translation>Die Korrektur wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Heal Spot</source>
        <translation>Fleck korrigieren</translation>
    </message>
    <message>
        <source>The spot is too large: there is nothing around it to heal it from.</source>
        <translation>Der Fleck ist zu groß: Ringsum ist nichts, woraus er korrigiert werden könnte.</translation>
    </message>
    <message>
        <source>The spot is being healed. Escape takes it back.</source>
        <translation>Der Fleck wird korrigiert. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>StampTool</name>
    <message>
        <source>Clone Stamp</source>
        <translation>Klonstempel</translation>
    </message>
    <message>
        <source>Hold Alt and click on the picture to say where the stamp reads from.</source>
        <translation>Klicken Sie mit gedrückter Alt-Taste auf das Bild, um die Quelle des Stempels festzulegen.</translation>
    </message>
    <message>
        <source>The stamp reads from another picture: hold Alt and click to choose a place in this one.</source>
        <translation>Die Quelle des Stempels liegt in einem anderen Bild: Klicken Sie mit gedrückter Alt-Taste, um eine Stelle in diesem festzulegen.</translation>
    </message>
    <message>
        <source>The stamp reads from %1, %2.</source>
        <translation>Die Quelle des Stempels liegt bei %1, %2.</translation>
    </message>
</context>
<context>
    <name>TextCommand</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation>Text bearbeiten</translation>
    </message>
</context>
<context>
    <name>TextTool</name>
    <message>
        <source>Text %1</source>
        <translation>Text %1</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>The text was taken back.</source>
        <translation>Der Text wurde verworfen.</translation>
    </message>
    <message>
        <source>The text is as it was before.</source>
        <translation>Der Text ist unverändert.</translation>
    </message>
    <message>
        <source>There is not enough memory for the change: the text is as it was before.</source>
        <translation>Der Speicher reicht für die Änderung nicht aus: Der Text ist unverändert.</translation>
    </message>
    <message>
        <source>There is not enough memory for another layer.</source>
        <translation>Der Speicher reicht für eine weitere Ebene nicht aus.</translation>
    </message>
    <message>
        <source>Ctrl+Enter sets the text down, and so does a click beside it. Escape takes it back.</source>
        <translation>Strg+Eingabe oder ein Klick daneben übernimmt den Text. Esc verwirft ihn.</translation>
    </message>
</context>
<context>
    <name>Tool</name>
    <message>
        <source>The layer &quot;%1&quot; is hidden: show it to work on it.</source>
        <translation>Die Ebene „%1“ ist ausgeblendet: Blenden Sie sie ein, um sie zu bearbeiten.</translation>
    </message>
</context>
<context>
    <name>ToolBox</name>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>TransformTool</name>
    <message>
        <source>Free Transform</source>
        <translation>Frei transformieren</translation>
    </message>
    <message>
        <source>The pixels are being transformed: %1 %. Escape takes it back.</source>
        <translation>Die Pixel werden transformiert: %1 %. Esc bricht ab.</translation>
    </message>
    <message>
        <source>Enter applies it, Escape takes it back. Shift: regular, Ctrl: skew, Alt: about the reference point.</source>
        <translation>Eingabe wendet es an, Esc verwirft es. Umschalt: gleichmäßig, Strg: neigen, Alt: um den Bezugspunkt.</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>%1°</source>
        <translation>%1°</translation>
    </message>
</context>
<context>
    <name>WandTool</name>
    <message>
        <source>Magic Wand</source>
        <translation>Zauberstab</translation>
    </message>
    <message>
        <source>Selecting was cancelled.</source>
        <translation>Das Auswählen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The picture is being searched: %1 %. Escape takes it back.</source>
        <translation>Das Bild wird durchsucht: %1 %. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>ZoomTool</name>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>A small image editor</source>
        <translation>Ein kleiner Bildeditor</translation>
    </message>
    <message>
        <source>Plays a tour of the program by itself and writes its pictures into DIR.</source>
        <translation>Spielt selbsttätig eine Tour durch das Programm ab und schreibt deren Bilder in DIR.</translation>
    </message>
    <message>
        <source>The pictures to open</source>
        <translation>Die zu öffnenden Bilder</translation>
    </message>
</context>
</TS>
