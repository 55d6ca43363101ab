<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccessibleDevice</name>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>no current value</source>
        <translation>kein aktueller Wert</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasActions</name>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Wider</source>
        <translation>Breiter</translation>
    </message>
    <message>
        <source>Narrower</source>
        <translation>Schmaler</translation>
    </message>
    <message>
        <source>Higher</source>
        <translation>Höher</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Niedriger</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Verdoppeln</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Alle auswählen</translation>
    </message>
    <message>
        <source>Move to page</source>
        <translation>Auf Seite verschieben</translation>
    </message>
    <message>
        <source>Insert row above</source>
        <translation>Zeile darüber einfügen</translation>
    </message>
    <message>
        <source>Insert row below</source>
        <translation>Zeile darunter einfügen</translation>
    </message>
    <message>
        <source>Remove row</source>
        <translation>Zeile entfernen</translation>
    </message>
    <message>
        <source>Insert column before</source>
        <translation>Spalte davor einfügen</translation>
    </message>
    <message>
        <source>Insert column behind</source>
        <translation>Spalte dahinter einfügen</translation>
    </message>
    <message>
        <source>Remove column</source>
        <translation>Spalte entfernen</translation>
    </message>
    <message>
        <source>Save as a template</source>
        <translation>Als Vorlage speichern</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasEdits</name>
    <message>
        <source>%1 devices</source>
        <translation>%1 Geräte</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>%1 verschieben</translation>
    </message>
    <message>
        <source>Resize %1</source>
        <translation>Größe ändern: %1</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Cut %1</source>
        <translation>%1 ausschneiden</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Duplicate %1</source>
        <translation>%1 verdoppeln</translation>
    </message>
    <message>
        <source>Insert a row</source>
        <translation>Eine Zeile einfügen</translation>
    </message>
    <message>
        <source>Insert a column</source>
        <translation>Eine Spalte einfügen</translation>
    </message>
    <message>
        <source>Remove a row</source>
        <translation>Eine Zeile entfernen</translation>
    </message>
    <message>
        <source>Remove a column</source>
        <translation>Eine Spalte entfernen</translation>
    </message>
    <message>
        <source>Put %1</source>
        <translation>%1 einsetzen</translation>
    </message>
</context>
<context>
    <name>norvo::CanvasModel</name>
    <message>
        <source>Not on the page</source>
        <translation>Nicht auf der Seite</translation>
    </message>
    <message>
        <source>%1 is there</source>
        <translation>%1 ist dort</translation>
    </message>
    <message>
        <source>%1 and %2 would be in one place</source>
        <translation>%1 und %2 kämen an dieselbe Stelle</translation>
    </message>
</context>
<context>
    <name>norvo::ColourEditor</name>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
</context>
<context>
    <name>norvo::ConflictSheet</name>
    <message>
        <source>The file was changed by others, too</source>
        <translation>Die Datei wurde auch von anderen geändert</translation>
    </message>
    <message>
        <source>Decide later</source>
        <translation>Später entscheiden</translation>
    </message>
    <message>
        <source>Take theirs</source>
        <translation>Ihre Fassung nehmen</translation>
    </message>
    <message>
        <source>Save mine over it</source>
        <translation>Meine darüber sichern</translation>
    </message>
    <message>
        <source>Here, not saved</source>
        <translation>Hier, nicht gesichert</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>In der Datei</translation>
    </message>
</context>
<context>
    <name>norvo::DevicePane</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Outputs and inputs</source>
        <translation>Ausgänge und Eingänge</translation>
    </message>
</context>
<context>
    <name>norvo::EditCanvas</name>
    <message>
        <source>%1, row %2, column %3</source>
        <translation>%1, Zeile %2, Spalte %3</translation>
    </message>
    <message>
        <source>The panel</source>
        <translation>Die Tafel</translation>
    </message>
    <message>
        <source>free</source>
        <translation>frei</translation>
    </message>
</context>
<context>
    <name>norvo::EditSession</name>
    <message>
        <source>It is made %1: change it there</source>
        <translation>Es entsteht %1: dort ändern</translation>
    </message>
    <message>
        <source>It stands in another file</source>
        <translation>Es steht in einer anderen Datei</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
</context>
<context>
    <name>norvo::EditedFile</name>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>The file was changed by others, and does not run: %1</source>
        <translation>Die Datei wurde von anderen geändert und läuft nicht: %1</translation>
    </message>
    <message>
        <source>Take over what others have changed</source>
        <translation>Änderungen anderer übernehmen</translation>
    </message>
</context>
<context>
    <name>norvo::EditorFrame</name>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>End editing</source>
        <translation>Bearbeiten beenden</translation>
    </message>
    <message>
        <source>Settings of the selected device</source>
        <translation>Einstellungen des gewählten Geräts</translation>
    </message>
    <message>
        <source>Add a device</source>
        <translation>Gerät hinzufügen</translation>
    </message>
    <message>
        <source>Connections</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Wires</source>
        <translation>Drähte</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Tap a device for its outputs and inputs, then what to connect</source>
        <translation>Gerät antippen zeigt Ausgänge und Eingänge; dann das Ziel antippen</translation>
    </message>
    <message>
        <source>Tap a type, then the cell that it goes to</source>
        <translation>Typ antippen, dann die Zelle, in die er soll</translation>
    </message>
    <message>
        <source>Tap a device to select it, draw it to move it</source>
        <translation>Gerät antippen wählt es, ziehen bewegt es</translation>
    </message>
    <message>
        <source>Undo: %1</source>
        <translation>Rückgängig: %1</translation>
    </message>
    <message>
        <source>Redo: %1</source>
        <translation>Wiederholen: %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Settings and pages of the panel</source>
        <translation>Einstellungen und Seiten des Panels</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Panel</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>%1 shows nothing: it is on the shelf, below the page in Wires</source>
        <translation>%1 ist auf der Tafel nicht zu sehen: bei „Drähte“ steht es unter der Seite</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Vorlagen</translation>
    </message>
</context>
<context>
    <name>norvo::KeyboardKey</name>
    <message>
        <source>Keyboard on the screen</source>
        <translation>Tastatur auf dem Bildschirm</translation>
    </message>
</context>
<context>
    <name>norvo::LinesEditor</name>
    <message>
        <source>%1: one more line</source>
        <translation>%1: eine Zeile mehr</translation>
    </message>
</context>
<context>
    <name>norvo::MenuSheet</name>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>norvo::FileEditor</name>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
</context>
<context>
    <name>norvo::FileFault</name>
    <message>
        <source>line %1: </source>
        <translation>Zeile %1: </translation>
    </message>
    <message>
        <source>The file has an error: %1</source>
        <translation>Die Datei hat einen Fehler: %1</translation>
    </message>
    <message>
        <source>Errors in the panel&apos;s file</source>
        <translation>Fehler in der Datei der Tafel</translation>
    </message>
    <message>
        <source>Read again</source>
        <translation>Neu lesen</translation>
    </message>
</context>
<context>
    <name>norvo::NumberEditor</name>
    <message>
        <source>%1: less</source>
        <translation>%1: weniger</translation>
    </message>
    <message>
        <source>%1: more</source>
        <translation>%1: mehr</translation>
    </message>
</context>
<context>
    <name>norvo::PagesList</name>
    <message>
        <source>Add a page</source>
        <translation>Seite hinzufügen</translation>
    </message>
    <message>
        <source>Page up by one</source>
        <translation>Seite eins nach oben</translation>
    </message>
    <message>
        <source>Page down by one</source>
        <translation>Seite eins nach unten</translation>
    </message>
    <message>
        <source>Remove the page</source>
        <translation>Seite entfernen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Name of the page</source>
        <translation>Name der Seite</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Devices: %1</source>
        <translation>Geräte: %1</translation>
    </message>
    <message>
        <source>The only page</source>
        <translation>Die einzige Seite</translation>
    </message>
    <message>
        <source>Name the page %1</source>
        <translation>Die Seite %1 nennen</translation>
    </message>
    <message>
        <source>Rename the page %1 to %2</source>
        <translation>Die Seite %1 in %2 umbenennen</translation>
    </message>
    <message>
        <source>Page %1</source>
        <translation>Seite %1</translation>
    </message>
    <message>
        <source>Add the page %1</source>
        <translation>Die Seite %1 hinzufügen</translation>
    </message>
    <message>
        <source>Move the page %1</source>
        <translation>Die Seite %1 verschieben</translation>
    </message>
    <message>
        <source>Remove the page %1</source>
        <translation>Die Seite %1 entfernen</translation>
    </message>
</context>
<context>
    <name>norvo::PanelEditing</name>
    <message>
        <source>Begin with an example</source>
        <translation>Mit einem Beispiel beginnen</translation>
    </message>
    <message>
        <source>Take over what was not saved</source>
        <translation>Nicht Gesichertes übernehmen</translation>
    </message>
</context>
<context>
    <name>norvo::PanelForm</name>
    <message>
        <source>The text above the window; without it, the name of the file.</source>
        <translation>Der Text über dem Fenster; ohne ihn der Name der Datei.</translation>
    </message>
    <message>
        <source>The colours; system: as the desktop has them.</source>
        <translation>Die Farben; system: wie die Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>How large keys are at least: for fingers, or for hands in gloves.</source>
        <translation>Wie groß Tasten mindestens sind: für Finger (fingers) oder Handschuhe (gloves).</translation>
    </message>
    <message>
        <source>The size in pixels that the panel was laid out for, such as 1024x600.</source>
        <translation>Die Größe in Pixeln, für die das Panel angelegt wurde, etwa 1024x600.</translation>
    </message>
    <message>
        <source>What fills a larger window: grow, the widgets do; scale, the page is drawn larger, which needs a design.</source>
        <translation>Was ein größeres Fenster füllt: grow, die Anzeigen; scale, die Seite wird größer gezeichnet, das braucht design.</translation>
    </message>
    <message>
        <source>Of the program's own texts and of the keyboard, such as de or pt_BR; without it, the system's.</source>
        <translation>Der Texte des Programms und der Tastatur, etwa de oder pt_BR; ohne sie die des Systems.</translation>
    </message>
    <message>
        <source>Set %1 of the panel</source>
        <translation>%1 des Panels setzen</translation>
    </message>
    <message>
        <source>Reset %1 of the panel</source>
        <translation>%1 des Panels zurücksetzen</translation>
    </message>
</context>
<context>
    <name>norvo::PanelPane</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
</context>
<context>
    <name>norvo::PanelWindow</name>
    <message>
        <source>This panel cannot start</source>
        <translation>Diese Tafel kann nicht starten</translation>
    </message>
    <message>
        <source>Read again</source>
        <translation>Neu lesen</translation>
    </message>
</context>
<context>
    <name>norvo::ErrorTile</name>
    <message>
        <source>Mend the cause or the panel file, then start the panel again.</source>
        <translation>Die Ursache oder die Datei der Tafel in Ordnung bringen, dann die Tafel neu starten.</translation>
    </message>
</context>
<context>
    <name>norvo::EntryDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Allowed: %1</source>
        <translation>Erlaubt: %1</translation>
    </message>
    <message>
        <source>Old value: %1</source>
        <translation>Alter Wert: %1</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Zeichen löschen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Alles löschen</translation>
    </message>
    <message>
        <source>Step up</source>
        <translation>Schritt aufwärts</translation>
    </message>
    <message>
        <source>Step down</source>
        <translation>Schritt abwärts</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalten</translation>
    </message>
    <message>
        <source>Capital letters</source>
        <translation>Großbuchstaben</translation>
    </message>
    <message>
        <source>This text is not accepted</source>
        <translation>Dieser Text wird nicht angenommen</translation>
    </message>
    <message>
        <source>Cursor left</source>
        <translation>Zeiger nach links</translation>
    </message>
    <message>
        <source>Cursor right</source>
        <translation>Zeiger nach rechts</translation>
    </message>
</context>
<context>
    <name>norvo::KeyPages</name>
    <message>
        <source>More keys</source>
        <translation>Weitere Tasten</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>norvo::RecoverySheet</name>
    <message>
        <source>The last editing ended before its changes were saved</source>
        <translation>Die letzte Bearbeitung endete, bevor ihre Änderungen gesichert waren</translation>
    </message>
    <message>
        <source>What was not saved</source>
        <translation>Was nicht gesichert war</translation>
    </message>
    <message>
        <source>In the file</source>
        <translation>In der Datei</translation>
    </message>
    <message>
        <source>Decide later</source>
        <translation>Später entscheiden</translation>
    </message>
    <message>
        <source>Drop them</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Take them over</source>
        <translation>Übernehmen</translation>
    </message>
</context>
<context>
    <name>norvo::RemovePageSheet</name>
    <message>
        <source>Remove the page %1?</source>
        <translation>Die Seite %1 entfernen?</translation>
    </message>
    <message>
        <source>Its devices and their connections go with it: %1. Undo brings all back.</source>
        <translation>Mit ihr gehen ihre Geräte und deren Verbindungen: %1. Rückgängig bringt alles zurück.</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>Keep it</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>norvo::SaveSheet</name>
    <message>
        <source>There are changes that are not saved</source>
        <translation>Es gibt nicht gesicherte Änderungen</translation>
    </message>
    <message>
        <source>Edit on</source>
        <translation>Weiter bearbeiten</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
</context>
<context>
    <name>norvo::StartSheet</name>
    <message>
        <source>A new panel</source>
        <translation>Ein neues Panel</translation>
    </message>
    <message>
        <source>What shall it begin with? All of it can be changed.</source>
        <translation>Womit soll es beginnen? Alles lässt sich ändern.</translation>
    </message>
    <message>
        <source>An empty page</source>
        <translation>Eine leere Seite</translation>
    </message>
    <message>
        <source>Hello</source>
        <translation>Hallo</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Messwerte</translation>
    </message>
    <message>
        <source>Controls</source>
        <translation>Bedienung</translation>
    </message>
    <message>
        <source>This machine</source>
        <translation>Diese Maschine</translation>
    </message>
</context>
<context>
    <name>norvo::StateMark</name>
    <message>
        <source>no value yet</source>
        <translation>noch kein Wert</translation>
    </message>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
</context>
<context>
    <name>NumpadDialog</name>
    <message>
        <source>Enter a number</source>
        <translation>Eine Zahl eingeben</translation>
    </message>
    <message>
        <source>This is not a number</source>
        <translation>Das ist keine Zahl</translation>
    </message>
    <message>
        <source>Below the lowest value allowed, %1</source>
        <translation>Unter dem kleinsten erlaubten Wert, %1</translation>
    </message>
    <message>
        <source>Above the highest value allowed, %1</source>
        <translation>Über dem größten erlaubten Wert, %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>any number</source>
        <translation>jede Zahl</translation>
    </message>
</context>
<context>
    <name>norvo::Sheet</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>norvo::SourceKey</name>
    <message>
        <source>Sources %1 of %2</source>
        <translation>Quellen %1 von %2</translation>
    </message>
    <message>
        <source>%1 of %2 sources lost</source>
        <translation>%1 von %2 Quellen ausgefallen</translation>
    </message>
    <message>
        <source>Sources</source>
        <translation>Quellen</translation>
    </message>
</context>
<context>
    <name>norvo::SourceList</name>
    <message>
        <source>well</source>
        <translation>in Ordnung</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>ausgefallen</translation>
    </message>
    <message>
        <source>nothing heard yet</source>
        <translation>noch nichts gehört</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>Seit</translation>
    </message>
    <message>
        <source>Values per second</source>
        <translation>Werte je Sekunde</translation>
    </message>
    <message>
        <source>Last message</source>
        <translation>Letzte Meldung</translation>
    </message>
</context>
<context>
    <name>norvo::StaleMark</name>
    <message>
        <source>not current: source lost</source>
        <translation>nicht aktuell: Quelle ausgefallen</translation>
    </message>
    <message>
        <source>no source</source>
        <translation>keine Quelle</translation>
    </message>
</context>
<context>
    <name>norvo::TypePalette</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Tap a cell to place it; tap here again to leave it</source>
        <translation>Eine Zelle antippen, um es zu setzen; hier noch einmal tippen, um es zu lassen</translation>
    </message>
    <message>
        <source>No type is called %1. Similar:</source>
        <translation>Kein Typ heißt %1. Ähnlich:</translation>
    </message>
    <message>
        <source>Others</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Nothing is found.</source>
        <translation>Nichts gefunden.</translation>
    </message>
    <message>
        <source>Remove the template</source>
        <translation>Vorlage entfernen</translation>
    </message>
    <message>
        <source>Types of devices and templates</source>
        <translation>Gerätetypen und Vorlagen</translation>
    </message>
    <message>
        <source>Search the types and templates</source>
        <translation>Typen und Vorlagen suchen</translation>
    </message>
    <message>
        <source>Templates</source>
        <translation>Vorlagen</translation>
    </message>
</context>
<context>
    <name>norvo::UnsavedCopy</name>
    <message>
        <source>What is not saved cannot be kept as %1: %2</source>
        <translation>Nicht Gesichertes lässt sich nicht als %1 aufheben: %2</translation>
    </message>
</context>
<context>
    <name>norvo::ValuesPage</name>
    <message>
        <source>never</source>
        <translation>nie</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>Show only rows with this text</source>
        <translation>Nur Zeilen mit diesem Text zeigen</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgang</translation>
    </message>
    <message>
        <source>Last value</source>
        <translation>Letzter Wert</translation>
    </message>
    <message>
        <source>Ago</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Values per second</source>
        <translation>Werte je Sekunde</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>All values</source>
        <translation>Alle Werte</translation>
    </message>
    <message>
        <source>Copy as text</source>
        <translation>Als Text kopieren</translation>
    </message>
    <message>
        <source>Search the values</source>
        <translation>Werte durchsuchen</translation>
    </message>
</context>
<context>
    <name>norvo::ReadoutAlerts</name>
    <message>
        <source>%1: no value comes</source>
        <translation>%1: kein Wert kommt</translation>
    </message>
    <message>
        <source>%1: below its threshold</source>
        <translation>%1: unter der Schwelle</translation>
    </message>
    <message>
        <source>%1: above its threshold</source>
        <translation>%1: über der Schwelle</translation>
    </message>
    <message>
        <source>%1: alarm</source>
        <translation>%1: Alarm</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmLines</name>
    <message>
        <source>%1 alarms at once, first: %2</source>
        <translation>%1 Alarme auf einmal, zuerst: %2</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmService</name>
    <message>
        <source>%1: connection lost</source>
        <translation>%1: Verbindung verloren</translation>
    </message>
    <message>
        <source>%1 does not run</source>
        <translation>%1 läuft nicht</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmSign</name>
    <message>
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message>
        <source>shelved</source>
        <translation>zurückgestellt</translation>
    </message>
    <message>
        <source>active</source>
        <translation>steht an</translation>
    </message>
    <message>
        <source>active, acknowledged</source>
        <translation>steht an, quittiert</translation>
    </message>
    <message>
        <source>over, not acknowledged</source>
        <translation>vorbei, nicht quittiert</translation>
    </message>
    <message>
        <source>over</source>
        <translation>vorbei</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmBar</name>
    <message>
        <source>Press to acknowledge, hold to acknowledge all</source>
        <translation>Drücken quittiert, Halten quittiert alle</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmStrip</name>
    <message>
        <source>Silence</source>
        <translation>Ton aus</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Silenced</source>
        <translation>Ton ist aus</translation>
    </message>
    <message>
        <source>Alarms %1</source>
        <translation>Alarme %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmDots</name>
    <message>
        <source>Alarm: %1</source>
        <translation>Alarm: %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmFace</name>
    <message>
        <source>Alarms</source>
        <translation>Alarme</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmList</name>
    <message>
        <source>began</source>
        <translation>begonnen</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>beendet</translation>
    </message>
    <message>
        <source>acknowledged</source>
        <translation>quittiert</translation>
    </message>
    <message>
        <source>shelved</source>
        <translation>zurückgestellt</translation>
    </message>
    <message>
        <source>taken from the shelf</source>
        <translation>wieder aufgenommen</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Alarm</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>first</source>
        <translation>zuerst</translation>
    </message>
    <message>
        <source>shelved until %1</source>
        <translation>zurückgestellt bis %1</translation>
    </message>
</context>
<context>
    <name>norvo::AlarmPage</name>
    <message>
        <source>For 10 minutes</source>
        <translation>Für 10 Minuten</translation>
    </message>
    <message>
        <source>For 1 hour</source>
        <translation>Für 1 Stunde</translation>
    </message>
    <message>
        <source>For 8 hours</source>
        <translation>Für 8 Stunden</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Shelved</source>
        <translation>Zurückgestellt</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>What is listed</source>
        <translation>Was aufgeführt ist</translation>
    </message>
    <message>
        <source>All priorities</source>
        <translation>Alle Prioritäten</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message>
        <source>All pages</source>
        <translation>Alle Seiten</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Save as CSV</source>
        <translation>Als CSV sichern</translation>
    </message>
    <message>
        <source>Go to device</source>
        <translation>Zum Gerät</translation>
    </message>
    <message>
        <source>Shelve</source>
        <translation>Zurückstellen</translation>
    </message>
    <message>
        <source>Acknowledge all</source>
        <translation>Alle quittieren</translation>
    </message>
    <message>
        <source>Acknowledge</source>
        <translation>Quittieren</translation>
    </message>
    <message>
        <source>Take from the shelf</source>
        <translation>Wieder aufnehmen</translation>
    </message>
    <message>
        <source>The history is saved as %1</source>
        <translation>Der Verlauf ist gesichert als %1</translation>
    </message>
    <message>
        <source>The history cannot be saved as %1: %2</source>
        <translation>Der Verlauf lässt sich nicht sichern als %1: %2</translation>
    </message>
</context>
<context>
    <name>Intent</name>
    <message>
        <source>Input value</source>
        <translation>Wert eingeben</translation>
    </message>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
</context>
<context>
    <name>norvo::QuestionSheet</name>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No (%1 s)</source>
        <translation>Nein (%1 s)</translation>
    </message>
</context>
<context>
    <name>norvo::LockMark</name>
    <message>
        <source>locked</source>
        <translation>gesperrt</translation>
    </message>
</context>
<context>
    <name>norvo::LockKey</name>
    <message>
        <source>Operator</source>
        <translation>Bediener</translation>
    </message>
    <message>
        <source>Engineer</source>
        <translation>Techniker</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>Locked. Unlock</source>
        <translation>Gesperrt. Entsperren</translation>
    </message>
    <message>
        <source>%1. Lock</source>
        <translation>%1. Sperren</translation>
    </message>
</context>
<context>
    <name>norvo::AccessFace</name>
    <message>
        <source>Really operate %1?</source>
        <translation>%1 wirklich bedienen?</translation>
    </message>
    <message>
        <source>PIN: %1</source>
        <translation>PIN: %1</translation>
    </message>
    <message>
        <source>This PIN is wrong.</source>
        <translation>Diese PIN ist falsch.</translation>
    </message>
    <message>
        <source>Too many wrong PINs</source>
        <translation>Zu viele falsche PINs</translation>
    </message>
    <message>
        <source>Try again in %1 s.</source>
        <translation>Neuer Versuch in %1 s.</translation>
    </message>
</context>
<context>
    <name>norvo::FileSheet</name>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Verwenden</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
<context>
    <name>norvo::FormHead</name>
    <message>
        <source>Id of the device</source>
        <translation>Kennung des Geräts</translation>
    </message>
    <message>
        <source>Nothing is selected</source>
        <translation>Nichts ist ausgewählt</translation>
    </message>
    <message>
        <source>%1 devices</source>
        <translation>%1 Geräte</translation>
    </message>
    <message>
        <source>Select a device on the panel.</source>
        <translation>Ein Gerät auf der Tafel auswählen.</translation>
    </message>
</context>
<context>
    <name>norvo::GraphTools</name>
    <message>
        <source>Graph tools: %1</source>
        <translation>Werkzeuge des Graphen: %1</translation>
    </message>
</context>
<context>
    <name>norvo::SeenPoints</name>
    <message>
        <source>No. %1</source>
        <translation>Nr. %1</translation>
    </message>
</context>
<context>
    <name>norvo::SwitchEditor</name>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
</context>
<context>
    <name>norvo::ToolPane</name>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>Fix range</source>
        <translation>Bereich halten</translation>
    </message>
    <message>
        <source>Save CSV</source>
        <translation>CSV sichern</translation>
    </message>
    <message>
        <source>Save picture</source>
        <translation>Bild sichern</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Not live: %1</source>
        <translation>Nicht live: %1</translation>
    </message>
    <message>
        <source>reading earlier values</source>
        <translation>frühere Werte werden gelesen</translation>
    </message>
    <message>
        <source>beginning of the record</source>
        <translation>Beginn der Aufzeichnung</translation>
    </message>
    <message>
        <source>the history cannot be read</source>
        <translation>die Aufzeichnung ist nicht lesbar</translation>
    </message>
    <message>
        <source>later values dropped until live</source>
        <translation>spätere Werte verworfen bis zu Live</translation>
    </message>
    <message>
        <source>range by hand</source>
        <translation>Bereich von Hand</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gesichert</translation>
    </message>
    <message>
        <source>Not saved</source>
        <translation>Nicht gesichert</translation>
    </message>
</context>
<context>
    <name>norvo::ConnectionSheet</name>
    <message>
        <source>New connection</source>
        <translation>Neue Verbindung</translation>
    </message>
    <message>
        <source>Change a connection</source>
        <translation>Eine Verbindung ändern</translation>
    </message>
    <message>
        <source>From this output</source>
        <translation>Von diesem Ausgang</translation>
    </message>
    <message>
        <source>To this input</source>
        <translation>Zu diesem Eingang</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>What is to be passed on?</source>
        <translation>Was soll weitergegeben werden?</translation>
    </message>
</context>
<context>
    <name>norvo::ConnectionTable</name>
    <message>
        <source>Add a connection</source>
        <translation>Verbindung hinzufügen</translation>
    </message>
    <message>
        <source>Change the chosen connection</source>
        <translation>Gewählte Verbindung ändern</translation>
    </message>
    <message>
        <source>Remove the chosen connection</source>
        <translation>Gewählte Verbindung entfernen</translation>
    </message>
    <message>
        <source>Show only rows with this text</source>
        <translation>Nur Zeilen mit diesem Text zeigen</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Last value</source>
        <translation>Letzter Wert</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Search the connections</source>
        <translation>Verbindungen durchsuchen</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceForm</name>
    <message>
        <source>More parameters</source>
        <translation>Weitere Parameter</translation>
    </message>
    <message>
        <source>Place on the panel</source>
        <translation>Ort auf der Tafel</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>Bedienung</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search the parameters</source>
        <translation>Die Parameter durchsuchen</translation>
    </message>
    <message>
        <source>Rename %1 to %2</source>
        <translation>%1 in %2 umbenennen</translation>
    </message>
    <message>
        <source>%1 devices</source>
        <translation>%1 Geräte</translation>
    </message>
    <message>
        <source>Set %1 of %2</source>
        <translation>%1 von %2 setzen</translation>
    </message>
    <message>
        <source>Reset %1 of %2</source>
        <translation>%1 von %2 zurücksetzen</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>%1 verschieben</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceShelf</name>
    <message>
        <source>Devices that are not seen on the panel</source>
        <translation>Geräte, die auf der Tafel nicht zu sehen sind</translation>
    </message>
    <message>
        <source>%1 out, %2 in</source>
        <translation>%1 aus, %2 ein</translation>
    </message>
</context>
<context>
    <name>norvo::ParamEditor</name>
    <message>
        <source>different values</source>
        <translation>verschiedene Werte</translation>
    </message>
</context>
<context>
    <name>norvo::ParamRow</name>
    <message>
        <source>%1: back to the default</source>
        <translation>%1: zurück zur Vorgabe</translation>
    </message>
    <message>
        <source>now: %1</source>
        <translation>jetzt: %1</translation>
    </message>
    <message>
        <source>a number, or %1</source>
        <translation>eine Zahl oder %1</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1 oder %2</translation>
    </message>
</context>
<context>
    <name>norvo::ParamStates</name>
    <message>
        <source>has an effect only where %1 is %2</source>
        <translation>wirkt nur, wo %1 gleich %2 ist</translation>
    </message>
    <message>
        <source>Whether its document may reach the network.</source>
        <translation>Ob sein Dokument ins Netz darf.</translation>
    </message>
    <message>
        <source>Whether the value that an operator gives is put back at the next start; send: and sent.</source>
        <translation>Ob der Wert, den ein Bediener gibt, beim nächsten Start wieder gesetzt wird; send: und gesendet.</translation>
    </message>
    <message>
        <source>Who may operate it.</source>
        <translation>Wer es bedienen darf.</translation>
    </message>
    <message>
        <source>What is asked before it changes.</source>
        <translation>Was gefragt wird, bevor es sich ändert.</translation>
    </message>
</context>
<context>
    <name>norvo::Port</name>
    <message>
        <source>number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>yes/no</source>
        <translation>Ja/Nein</translation>
    </message>
    <message>
        <source>array</source>
        <translation>Feld von Zahlen</translation>
    </message>
    <message>
        <source>bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>any value</source>
        <translation>jeden Wert</translation>
    </message>
    <message>
        <source>a pulse</source>
        <translation>einen Impuls</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 oder %2</translation>
    </message>
</context>
<context>
    <name>norvo::PortColumn</name>
    <message>
        <source>Show only what holds this text</source>
        <translation>Nur zeigen, was diesen Text enthält</translation>
    </message>
</context>
<context>
    <name>norvo::PortKeys</name>
    <message>
        <source>Output %1</source>
        <translation>Ausgang %1</translation>
    </message>
    <message>
        <source>Input %1</source>
        <translation>Eingang %1</translation>
    </message>
    <message>
        <source>All %1 ...</source>
        <translation>Alle %1 ...</translation>
    </message>
</context>
<context>
    <name>norvo::PortList</name>
    <message>
        <source>%1 is connected to %2 already</source>
        <translation>%1 ist mit %2 schon verbunden</translation>
    </message>
    <message>
        <source>%1 carries %2, %3 takes %4</source>
        <translation>%1 liefert %2, %3 nimmt %4</translation>
    </message>
</context>
<context>
    <name>norvo::PortRow</name>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>new output</source>
        <translation>neuer Ausgang</translation>
    </message>
    <message>
        <source>new input</source>
        <translation>neuer Eingang</translation>
    </message>
    <message>
        <source>New output</source>
        <translation>Neuer Ausgang</translation>
    </message>
    <message>
        <source>New input</source>
        <translation>Neuer Eingang</translation>
    </message>
    <message>
        <source>Name of %1</source>
        <translation>Name von %1</translation>
    </message>
    <message>
        <source>Definition</source>
        <translation>Festlegung</translation>
    </message>
    <message>
        <source>Definition of %1</source>
        <translation>Festlegung von %1</translation>
    </message>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Rename %1.%2</source>
        <translation>%1.%2 umbenennen</translation>
    </message>
    <message>
        <source>Define %1.%2</source>
        <translation>%1.%2 festlegen</translation>
    </message>
    <message>
        <source>Add %1.%2</source>
        <translation>%1.%2 hinzufügen</translation>
    </message>
    <message>
        <source>Remove %1.%2</source>
        <translation>%1.%2 entfernen</translation>
    </message>
</context>
<context>
    <name>norvo::PortsForm</name>
    <message>
        <source>Outputs of %1</source>
        <translation>Ausgänge von %1</translation>
    </message>
    <message>
        <source>Inputs of %1</source>
        <translation>Eingänge von %1</translation>
    </message>
</context>
<context>
    <name>norvo::WireCanvas</name>
    <message>
        <source>Remove the connection</source>
        <translation>Verbindung entfernen</translation>
    </message>
    <message>
        <source>Go to the other end</source>
        <translation>Zum anderen Ende gehen</translation>
    </message>
    <message>
        <source>Connections of the panel</source>
        <translation>Verbindungen der Tafel</translation>
    </message>
    <message>
        <source>%1 inputs</source>
        <translation>%1 Eingänge</translation>
    </message>
    <message>
        <source>%1 outputs</source>
        <translation>%1 Ausgänge</translation>
    </message>
    <message>
        <source>%1 has no inputs</source>
        <translation>%1 hat keine Eingänge</translation>
    </message>
    <message>
        <source>%1 has no outputs</source>
        <translation>%1 hat keine Ausgänge</translation>
    </message>
    <message>
        <source>%1 has no outputs and no inputs</source>
        <translation>%1 hat weder Ausgänge noch Eingänge</translation>
    </message>
    <message>
        <source>Outputs of %1</source>
        <translation>Ausgänge von %1</translation>
    </message>
    <message>
        <source>Inputs of %1</source>
        <translation>Eingänge von %1</translation>
    </message>
    <message>
        <source>What is to be passed on?</source>
        <translation>Was soll weitergegeben werden?</translation>
    </message>
</context>
<context>
    <name>norvo::WireEdits</name>
    <message>
        <source>It is made %1: change it there</source>
        <translation>Entstanden %1: dort ändern</translation>
    </message>
    <message>
        <source>It stands in another file</source>
        <translation>Steht in einer anderen Datei</translation>
    </message>
    <message>
        <source>Connect %1 to %2</source>
        <translation>%1 mit %2 verbinden</translation>
    </message>
    <message>
        <source>Change the connection of %1 to %2</source>
        <translation>Verbindung von %1 zu %2 ändern</translation>
    </message>
    <message>
        <source>Disconnect %1 from %2</source>
        <translation>%1 von %2 trennen</translation>
    </message>
    <message>
        <source>Connected. This closes the circle %1; its values are passed on one after the other</source>
        <translation>Verbunden. Das schließt den Kreis %1; seine Werte werden nacheinander weitergegeben</translation>
    </message>
</context>
<context>
    <name>norvo::WireValues</name>
    <message>
        <source>pulse</source>
        <translation>Impuls</translation>
    </message>
</context>
<context>
    <name>norvo::TemplateSet</name>
    <message>
        <source>The file is too large</source>
        <translation>Die Datei ist zu groß</translation>
    </message>
    <message>
        <source>It needs the type %1, which no plug-in has</source>
        <translation>Sie braucht den Typ %1, den kein Plug-in hat</translation>
    </message>
    <message>
        <source>It has no devices</source>
        <translation>Sie hat keine Geräte</translation>
    </message>
    <message>
        <source>A template needs a name</source>
        <translation>Eine Vorlage braucht einen Namen</translation>
    </message>
    <message>
        <source>There is a template of that name already</source>
        <translation>Es gibt schon eine Vorlage dieses Namens</translation>
    </message>
    <message>
        <source>It cannot be written to %1: %2</source>
        <translation>Sie kann nicht nach %1 geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Only templates of your own can be removed</source>
        <translation>Nur eigene Vorlagen können entfernt werden</translation>
    </message>
    <message>
        <source>It cannot be removed: %1</source>
        <translation>Sie kann nicht entfernt werden: %1</translation>
    </message>
</context>
<context>
    <name>norvo::TemplateSheet</name>
    <message>
        <source>Save as a template</source>
        <translation>Als Vorlage speichern</translation>
    </message>
    <message>
        <source>The selected devices and the connections among them will stand in Add, under Templates, for every panel that you edit.</source>
        <translation>Die gewählten Geräte und die Verbindungen zwischen ihnen stehen dann unter Neu bei den Vorlagen, für jedes Panel, das Sie bearbeiten.</translation>
    </message>
    <message>
        <source>Name of the template</source>
        <translation>Name der Vorlage</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
</context>
<context>
    <name>norvo::DeviceGroup</name>
    <message>
        <source>These are no devices of a panel: %1</source>
        <translation>Das sind keine Geräte eines Panels: %1</translation>
    </message>
    <message>
        <source>No devices have been copied</source>
        <translation>Es sind keine Geräte kopiert</translation>
    </message>
</context>
</TS>
