<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Sandbox host of AIBridge (zorhost)</source>
        <translation>Sandbox-Host von AIBridge (zorhost)</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Datenträger</translation>
    </message>
    <message>
        <source>Real: orders change the disks and images of the command line.</source>
        <translation>Echt: Aufträge ändern die Datenträger und Abbilder der Befehlszeile.</translation>
    </message>
    <message>
        <source>Simulated: no disk of the computer is changed.</source>
        <translation>Simuliert: Kein Datenträger des Computers wird geändert.</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Qt %1, Apache Thrift %2</source>
        <translation>Qt %1, Apache Thrift %2</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>No licence is given.</source>
        <translation>Eine Lizenz ist nicht erteilt.</translation>
    </message>
</context>
<context>
    <name>ActivityPane</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Agent</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s)</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>Show agent</source>
        <translation>Agent anzeigen</translation>
    </message>
    <message>
        <source>Show log</source>
        <translation>Protokoll anzeigen</translation>
    </message>
    <message>
        <source>Only drive %1: show all</source>
        <translation>Nur Laufwerk %1: alle anzeigen</translation>
    </message>
</context>
<context>
    <name>ClientList</name>
    <message>
        <source>since %1</source>
        <comment>time of day</comment>
        <translation>seit %1</translation>
    </message>
    <message numerus="yes">
        <source>%n call(s)</source>
        <translation>
            <numerusform>%n Aufruf</numerusform>
            <numerusform>%n Aufrufe</numerusform>
        </translation>
    </message>
    <message>
        <source>No client is connected.</source>
        <translation>Kein Client ist verbunden.</translation>
    </message>
</context>
<context>
    <name>ConfirmationDialog</name>
    <message>
        <source>Change the disk</source>
        <translation>Datenträger ändern</translation>
    </message>
    <message>
        <source>Do not change</source>
        <translation>Nicht ändern</translation>
    </message>
</context>
<context>
    <name>DiskCard</name>
    <message>
        <source>Empty</source>
        <translation>Leer</translation>
    </message>
</context>
<context>
    <name>DiskPane</name>
    <message>
        <source>The machine has no disks.</source>
        <translation>Die Maschine hat keine Datenträger.</translation>
    </message>
    <message>
        <source>The disk has no known partition.</source>
        <translation>Der Datenträger hat keine bekannte Partition.</translation>
    </message>
    <message>
        <source>No disk matches the search.</source>
        <translation>Kein Datenträger entspricht der Suche.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Compact</source>
        <translation>Kompakt</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Datenträger</translation>
    </message>
</context>
<context>
    <name>GuidePane</name>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Header</name>
    <message>
        <source>service is starting</source>
        <translation>Dienst startet</translation>
    </message>
    <message>
        <source>agent service on %1</source>
        <translation>Dienst auf %1</translation>
    </message>
    <message>
        <source>busy: %1</source>
        <translation>beschäftigt: %1</translation>
    </message>
    <message>
        <source>dialog open</source>
        <translation>Dialog offen</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Scan now</source>
        <translation>Jetzt prüfen</translation>
    </message>
    <message>
        <source>The machine has no name.</source>
        <translation>Die Maschine hat keinen Namen.</translation>
    </message>
</context>
<context>
    <name>HeaderMenu</name>
    <message>
        <source>Colours of the system</source>
        <translation>Farben des Systems</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über das Programm</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>Next part of the window, previous part.</source>
        <translation>Nächster Teil des Fensters, voriger Teil.</translation>
    </message>
    <message>
        <source>Menu, Shift+F10</source>
        <translation>Menü, Umschalt+F10</translation>
    </message>
    <message>
        <source>In the disks: open the menu of the entry.</source>
        <translation>In den Datenträgern: Menü des Eintrags öffnen.</translation>
    </message>
    <message>
        <source>Shift+Up, Shift+Down</source>
        <translation>Umschalt+Auf, Umschalt+Ab</translation>
    </message>
    <message>
        <source>In the log: select lines.</source>
        <translation>Im Protokoll: Zeilen auswählen.</translation>
    </message>
    <message>
        <source>Ctrl+A, Ctrl+C</source>
        <translation>Strg+A, Strg+C</translation>
    </message>
    <message>
        <source>In the log: select all lines, copy the selected lines.</source>
        <translation>Im Protokoll: alle Zeilen auswählen, ausgewählte Zeilen kopieren.</translation>
    </message>
    <message>
        <source>Up, Down</source>
        <translation>Pfeil auf, Pfeil ab</translation>
    </message>
    <message>
        <source>In the disks: previous disk, next disk. In other lists: scroll.</source>
        <translation>Bei den Datenträgern: voriger, nächster Datenträger. In anderen Listen: blättern.</translation>
    </message>
    <message>
        <source>Left, Right</source>
        <translation>Pfeil links, Pfeil rechts</translation>
    </message>
    <message>
        <source>In the disks: previous entry of the disk, next entry.</source>
        <translation>Bei den Datenträgern: voriger, nächster Eintrag des Datenträgers.</translation>
    </message>
    <message>
        <source>Home, End</source>
        <translation>Pos1, Ende</translation>
    </message>
    <message>
        <source>In a list: start, end.</source>
        <translation>In einer Liste: Anfang, Ende.</translation>
    </message>
    <message>
        <source>Enter, Space</source>
        <translation>Eingabe, Leertaste</translation>
    </message>
    <message>
        <source>Press the button or change the switch.</source>
        <translation>Schaltfläche drücken oder Schalter umstellen.</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Close a dialog or the guide, clear the search, decline a recommendation.</source>
        <translation>Dialog oder Assistenten schließen, Suche leeren, Empfehlung ablehnen.</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Strg+F</translation>
    </message>
    <message>
        <source>Search the disks.</source>
        <translation>Datenträger suchen.</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Strg+Q</translation>
    </message>
    <message>
        <source>Close the window. A question follows if a task is destroying data.</source>
        <translation>Fenster schließen. Vorher folgt eine Frage, wenn eine Aufgabe Daten zerstört.</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Show this list.</source>
        <translation>Diese Liste anzeigen.</translation>
    </message>
</context>
<context>
    <name>InformationDialog</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>InterruptionDialog</name>
    <message>
        <source>Closing the window cancels this task. The partitions that it changes remain incomplete and can be unusable.</source>
        <translation>Wenn das Fenster geschlossen wird, bricht diese Aufgabe ab. Die Partitionen, die sie ändert, bleiben unvollständig und können unbrauchbar sein.</translation>
    </message>
    <message>
        <source>This task is changing data. If it is cancelled, the partitions that it changes remain incomplete and can be unusable.</source>
        <translation>Diese Aufgabe ändert Daten. Wenn sie abgebrochen wird, bleiben die Partitionen, die sie ändert, unvollständig und können unbrauchbar sein.</translation>
    </message>
    <message>
        <source>Cancel the task and close</source>
        <translation>Aufgabe abbrechen und schließen</translation>
    </message>
    <message>
        <source>Cancel the task</source>
        <translation>Aufgabe abbrechen</translation>
    </message>
    <message>
        <source>Continue the task</source>
        <translation>Aufgabe fortsetzen</translation>
    </message>
</context>
<context>
    <name>Legend</name>
    <message>
        <source>Other</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Used</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Frei</translation>
    </message>
    <message>
        <source>Planned</source>
        <translation>Geplant</translation>
    </message>
    <message>
        <source>Will be lost</source>
        <translation>Geht verloren</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Filter the log</source>
        <translation>Protokoll filtern</translation>
    </message>
    <message>
        <source>No line contains this text.</source>
        <translation>Keine Zeile enthält diesen Text.</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>LossNotice</name>
    <message>
        <source>This order changes a real disk. If it fails, this data can be lost:</source>
        <translation>Dieser Auftrag ändert einen echten Datenträger. Wenn er fehlschlägt, können diese Daten verloren gehen:</translation>
    </message>
    <message>
        <source>This order changes a real disk. It destroys this data permanently:</source>
        <translation>Dieser Auftrag ändert einen echten Datenträger. Er zerstört diese Daten endgültig:</translation>
    </message>
    <message>
        <source>If this order fails, this data can be lost:</source>
        <translation>Wenn dieser Auftrag fehlschlägt, können diese Daten verloren gehen:</translation>
    </message>
    <message>
        <source>This order destroys this data permanently:</source>
        <translation>Dieser Auftrag zerstört diese Daten endgültig:</translation>
    </message>
    <message>
        <source>The disk has no known partition. Data without a partition is lost.</source>
        <translation>Der Datenträger hat keine bekannte Partition. Daten außerhalb von Partitionen gehen verloren.</translation>
    </message>
</context>
<context>
    <name>ModeMark</name>
    <message>
        <source>Real disks</source>
        <translation>Echte Datenträger</translation>
    </message>
    <message>
        <source>Simulation</source>
        <translation>Simulation</translation>
    </message>
</context>
<context>
    <name>PageDialog</name>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>Opened address: %1</source>
        <translation>Geöffnete Adresse: %1</translation>
    </message>
</context>
<context>
    <name>PaneTabs</name>
    <message>
        <source>Panes</source>
        <translation>Bereiche</translation>
    </message>
    <message>
        <source>Disks</source>
        <translation>Datenträger</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>Assistent</translation>
    </message>
    <message>
        <source>Recommendation</source>
        <translation>Empfehlung</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Aufgaben</translation>
    </message>
    <message>
        <source>Agent</source>
        <translation>Agent</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Zum Testen</translation>
    </message>
</context>
<context>
    <name>QueuePane</name>
    <message>
        <source>Tasks</source>
        <translation>Aufgaben</translation>
    </message>
    <message numerus="yes">
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n Aufgabe</numerusform>
            <numerusform>%n Aufgaben</numerusform>
        </translation>
    </message>
    <message>
        <source>No tasks yet.</source>
        <translation>Noch keine Aufgaben.</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Cancel all</source>
        <translation>Alle abbrechen</translation>
    </message>
</context>
<context>
    <name>QueueRow</name>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>waiting for confirmation</source>
        <translation>wartet auf Bestätigung</translation>
    </message>
</context>
<context>
    <name>RecommendationCard</name>
    <message>
        <source>Recommendation</source>
        <translation>Empfehlung</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>The scan found nothing to recommend.</source>
        <translation>Die Prüfung hat nichts zu empfehlen gefunden.</translation>
    </message>
</context>
<context>
    <name>Sandbox</name>
    <message>
        <source>The disk has partitions.</source>
        <translation>Der Datenträger enthält Partitionen.</translation>
    </message>
    <message>
        <source>The disk has no partition table.</source>
        <translation>Der Datenträger hat keine Partitionstabelle.</translation>
    </message>
    <message>
        <source>The erase count must be positive.</source>
        <translation>Die Anzahl der Löschvorgänge muss positiv sein.</translation>
    </message>
    <message>
        <source>The partition table must be GPT or MBR.</source>
        <translation>Die Partitionstabelle muss GPT oder MBR sein.</translation>
    </message>
    <message>
        <source>The partition table cannot hold that many partitions.</source>
        <translation>Die Partitionstabelle fasst nicht so viele Partitionen.</translation>
    </message>
    <message>
        <source>The disk is online.</source>
        <translation>Der Datenträger ist online.</translation>
    </message>
    <message>
        <source>The drive is not on a USB disk.</source>
        <translation>Das Laufwerk befindet sich nicht auf einem USB-Datenträger.</translation>
    </message>
    <message>
        <source>The disk holds the running system.</source>
        <translation>Der Datenträger enthält das laufende System.</translation>
    </message>
    <message>
        <source>No other disk has room for the data.</source>
        <translation>Kein anderer Datenträger hat Platz für die Daten.</translation>
    </message>
    <message>
        <source>The cluster size is not supported.</source>
        <translation>Die Clustergröße wird nicht unterstützt.</translation>
    </message>
    <message>
        <source>The clusters are too small for that size.</source>
        <translation>Die Cluster sind für diese Größe zu klein.</translation>
    </message>
    <message>
        <source>%1 cannot be created in that size.</source>
        <translation>%1 kann in dieser Größe nicht erstellt werden.</translation>
    </message>
    <message>
        <source>The label is too long.</source>
        <translation>Die Bezeichnung ist zu lang.</translation>
    </message>
    <message>
        <source>The label contains an invalid character.</source>
        <translation>Die Bezeichnung enthält ein unzulässiges Zeichen.</translation>
    </message>
    <message>
        <source>%1 does not support that size.</source>
        <translation>%1 unterstützt diese Größe nicht.</translation>
    </message>
    <message>
        <source>The source is locked by BitLocker.</source>
        <translation>Die Quelle ist durch BitLocker gesperrt.</translation>
    </message>
    <message>
        <source>The destination is too small.</source>
        <translation>Das Ziel ist zu klein.</translation>
    </message>
    <message>
        <source>The destination is not a disk.</source>
        <translation>Das Ziel ist kein Datenträger.</translation>
    </message>
    <message>
        <source>The destination must be another disk.</source>
        <translation>Das Ziel muss ein anderer Datenträger sein.</translation>
    </message>
    <message>
        <source>The partition table is full.</source>
        <translation>Die Partitionstabelle ist voll.</translation>
    </message>
    <message>
        <source>An MBR disk cannot use space beyond 2 TiB.</source>
        <translation>Ein MBR-Datenträger kann Speicherplatz jenseits von 2 TiB nicht nutzen.</translation>
    </message>
    <message>
        <source>A partition can only be cloned to a partition or to free space.</source>
        <translation>Eine Partition kann nur auf eine Partition oder in freien Speicherplatz geklont werden.</translation>
    </message>
    <message>
        <source>The disks have different sector sizes.</source>
        <translation>Die Datenträger haben unterschiedliche Sektorgrößen.</translation>
    </message>
    <message>
        <source>The destination cannot be written to.</source>
        <translation>Auf das Ziel kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Boot media cannot be created.</source>
        <translation>Es können keine Rettungsmedien erstellt werden.</translation>
    </message>
    <message>
        <source>A USB disk is required.</source>
        <translation>Ein USB-Datenträger ist erforderlich.</translation>
    </message>
    <message>
        <source>The disk is too small for the boot medium.</source>
        <translation>Der Datenträger ist für das Rettungsmedium zu klein.</translation>
    </message>
    <message>
        <source>The pre-OS environment is already installed.</source>
        <translation>Die Pre-OS-Umgebung ist bereits installiert.</translation>
    </message>
    <message>
        <source>The pre-OS environment is not installed.</source>
        <translation>Die Pre-OS-Umgebung ist nicht installiert.</translation>
    </message>
    <message>
        <source>The disk cannot be read.</source>
        <translation>Der Datenträger kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>A GPT disk has no MBR to rebuild.</source>
        <translation>Ein GPT-Datenträger hat keinen MBR, der neu erstellt werden könnte.</translation>
    </message>
    <message>
        <source>The disk has no room to move the partitions.</source>
        <translation>Der Datenträger hat keinen Platz, um die Partitionen zu verschieben.</translation>
    </message>
    <message>
        <source>disk %1</source>
        <translation>Datenträger %1</translation>
    </message>
    <message>
        <source>The source does not exist.</source>
        <translation>Die Quelle ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The source disk cannot be read.</source>
        <translation>Der Quelldatenträger kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The source disk is empty.</source>
        <translation>Der Quelldatenträger ist leer.</translation>
    </message>
    <message>
        <source>The source is not a partition.</source>
        <translation>Die Quelle ist keine Partition.</translation>
    </message>
    <message>
        <source>The destination does not exist.</source>
        <translation>Das Ziel ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The source cannot be cloned onto itself.</source>
        <translation>Die Quelle kann nicht auf sich selbst geklont werden.</translation>
    </message>
    <message>
        <source>The destination has no place for a partition.</source>
        <translation>Das Ziel bietet keinen Platz für eine Partition.</translation>
    </message>
    <message>
        <source>The destination holds the running system.</source>
        <translation>Das Ziel enthält das laufende System.</translation>
    </message>
    <message>
        <source>The disk is already a GPT disk.</source>
        <translation>Der Datenträger ist bereits ein GPT-Datenträger.</translation>
    </message>
    <message>
        <source>The disk has no room for the partition table.</source>
        <translation>Der Datenträger hat keinen Platz für die Partitionstabelle.</translation>
    </message>
    <message>
        <source>The disk is already an MBR disk.</source>
        <translation>Der Datenträger ist bereits ein MBR-Datenträger.</translation>
    </message>
    <message>
        <source>A partition extends beyond 2 TiB, which an MBR disk cannot address.</source>
        <translation>Eine Partition reicht über 2 TiB hinaus, die ein MBR-Datenträger nicht adressieren kann.</translation>
    </message>
    <message>
        <source>The disk is already a basic disk.</source>
        <translation>Der Datenträger ist bereits ein Basisdatenträger.</translation>
    </message>
    <message>
        <source>A volume spans several disks.</source>
        <translation>Ein Volume erstreckt sich über mehrere Datenträger.</translation>
    </message>
    <message>
        <source>The disk is already a dynamic disk.</source>
        <translation>Der Datenträger ist bereits dynamisch.</translation>
    </message>
    <message>
        <source>A USB disk cannot be dynamic.</source>
        <translation>Ein USB-Datenträger kann nicht dynamisch sein.</translation>
    </message>
    <message>
        <source>The disk cannot be written to.</source>
        <translation>Auf den Datenträger kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The disk is dynamic.</source>
        <translation>Der Datenträger ist dynamisch.</translation>
    </message>
    <message>
        <source>The drive cannot be written to.</source>
        <translation>Auf das Laufwerk kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The drive already has that file system.</source>
        <translation>Das Laufwerk hat dieses Dateisystem bereits.</translation>
    </message>
    <message>
        <source>The drive has no readable file system.</source>
        <translation>Das Laufwerk hat kein lesbares Dateisystem.</translation>
    </message>
    <message>
        <source>The running system needs its file system.</source>
        <translation>Das laufende System benötigt sein Dateisystem.</translation>
    </message>
    <message>
        <source>The drive cannot have that file system. %1</source>
        <translation>Das Laufwerk kann dieses Dateisystem nicht haben. %1</translation>
    </message>
    <message>
        <source>The conversion does not exist.</source>
        <translation>Diese Konvertierung gibt es nicht.</translation>
    </message>
    <message>
        <source>The drive does not exist.</source>
        <translation>Das Laufwerk ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The disk does not exist.</source>
        <translation>Der Datenträger ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>basic</source>
        <translation>Basisdatenträger</translation>
    </message>
    <message>
        <source>dynamic</source>
        <translation>dynamischer Datenträger</translation>
    </message>
    <message>
        <source>The function does not exist.</source>
        <translation>Diese Funktion gibt es nicht.</translation>
    </message>
    <message>
        <source>The function is switched off.</source>
        <translation>Die Funktion ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>The target does not exist.</source>
        <translation>Das Ziel ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The disk is already aligned.</source>
        <translation>Der Datenträger ist bereits ausgerichtet.</translation>
    </message>
    <message>
        <source>The drive is not encrypted.</source>
        <translation>Das Laufwerk ist nicht verschlüsselt.</translation>
    </message>
    <message>
        <source>free space on disk %1</source>
        <translation>freier Speicherplatz auf Datenträger %1</translation>
    </message>
    <message>
        <source>drive %1</source>
        <translation>Laufwerk %1</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>A partition in between cannot be moved.</source>
        <translation>Eine dazwischenliegende Partition kann nicht verschoben werden.</translation>
    </message>
    <message>
        <source>The disk has no space to take.</source>
        <translation>Auf diesem Datenträger ist kein Speicherplatz verfügbar.</translation>
    </message>
    <message>
        <source>The data does not fit into that size.</source>
        <translation>Die Daten passen nicht in diese Größe.</translation>
    </message>
    <message>
        <source>The free space after the drive is too small.</source>
        <translation>Der freie Speicherplatz nach dem Laufwerk ist zu klein.</translation>
    </message>
    <message>
        <source>The drive does not have that much free space.</source>
        <translation>Auf dem Laufwerk ist nicht so viel Speicherplatz frei.</translation>
    </message>
    <message>
        <source>The free region does not exist.</source>
        <translation>Der freie Bereich ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>The free region is too small.</source>
        <translation>Der freie Bereich ist zu klein.</translation>
    </message>
    <message>
        <source>Both drives must be on the same disk.</source>
        <translation>Beide Laufwerke müssen sich auf demselben Datenträger befinden.</translation>
    </message>
    <message>
        <source>The second drive cannot be deleted.</source>
        <translation>Das zweite Laufwerk kann nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>The second drive has no readable file system.</source>
        <translation>Das zweite Laufwerk hat kein lesbares Dateisystem.</translation>
    </message>
    <message>
        <source>The drives are not adjacent.</source>
        <translation>Die Laufwerke liegen nicht nebeneinander.</translation>
    </message>
    <message>
        <source>The target must be another drive on the same disk.</source>
        <translation>Das Ziel muss ein anderes Laufwerk desselben Datenträgers sein.</translation>
    </message>
    <message>
        <source>The size must be at least one mebibyte.</source>
        <translation>Die Größe muss mindestens ein Mebibyte betragen.</translation>
    </message>
    <message>
        <source>The target has no readable file system.</source>
        <translation>Das Ziel hat kein lesbares Dateisystem.</translation>
    </message>
    <message>
        <source>The drive already has that type, or its disk has no primary and logical partitions.</source>
        <translation>Das Laufwerk hat diesen Typ bereits, oder sein Datenträger hat keine primären und logischen Partitionen.</translation>
    </message>
    <message>
        <source>The computer starts from the drive.</source>
        <translation>Der Computer startet von diesem Laufwerk.</translation>
    </message>
    <message>
        <source>The drive is not adjacent to the other logical drives.</source>
        <translation>Das Laufwerk grenzt nicht an die anderen logischen Laufwerke.</translation>
    </message>
    <message>
        <source>The drive is between logical drives.</source>
        <translation>Das Laufwerk befindet sich zwischen logischen Laufwerken.</translation>
    </message>
    <message>
        <source>The running system needs its drive letter.</source>
        <translation>Das laufende System benötigt seinen Laufwerkbuchstaben.</translation>
    </message>
    <message>
        <source>The new letter is not a drive letter, or is already in use.</source>
        <translation>Der neue Laufwerkbuchstabe ist ungültig oder bereits vergeben.</translation>
    </message>
    <message>
        <source>Only an inactive primary drive of an MBR disk can be made active.</source>
        <translation>Nur ein primäres, noch nicht aktives Laufwerk eines MBR-Datenträgers kann aktiviert werden.</translation>
    </message>
    <message>
        <source>The drive is already hidden.</source>
        <translation>Das Laufwerk ist bereits ausgeblendet.</translation>
    </message>
    <message>
        <source>Disk %1 does not exist.</source>
        <translation>Datenträger %1 ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>No drive has the letter %1.</source>
        <translation>Kein Laufwerk hat den Buchstaben %1.</translation>
    </message>
    <message>
        <source>The drive holds the running system.</source>
        <translation>Das Laufwerk enthält das laufende System.</translation>
    </message>
    <message>
        <source>The drive is locked by BitLocker.</source>
        <translation>Das Laufwerk ist durch BitLocker gesperrt.</translation>
    </message>
    <message>
        <source>The file system &quot;%1&quot; cannot be created.</source>
        <translation>Das Dateisystem „%1“ kann nicht erstellt werden.</translation>
    </message>
    <message>
        <source>All drive letters are in use.</source>
        <translation>Alle Laufwerkbuchstaben sind vergeben.</translation>
    </message>
    <message>
        <source>Function %1 does not exist.</source>
        <translation>Die Funktion %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>Clone: %1 to %2</source>
        <translation>Klonen: %1 auf %2</translation>
    </message>
    <message>
        <source>Convert: %1 to %2</source>
        <translation>Konvertieren: %1, Ziel: %2</translation>
    </message>
    <message>
        <source>Disk %1</source>
        <translation>Datenträger %1</translation>
    </message>
    <message numerus="yes">
        <source>%n disk(s), %1</source>
        <translation>
            <numerusform>%n Datenträger, %1</numerusform>
            <numerusform>%n Datenträger, %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>Bad</source>
        <translation>Defekt</translation>
    </message>
    <message>
        <source>Read-only</source>
        <translation>Schreibgeschützt</translation>
    </message>
    <message>
        <source>Protected</source>
        <translation>Geschützt</translation>
    </message>
    <message>
        <source>Dynamic</source>
        <translation>Dynamisch</translation>
    </message>
    <message>
        <source>Storage space</source>
        <translation>Speicherplatzpool</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>Virtuell</translation>
    </message>
    <message>
        <source>Boot</source>
        <translation>Startpartition</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>EFI</source>
        <translation>EFI</translation>
    </message>
    <message>
        <source>Reserved</source>
        <translation>Reserviert</translation>
    </message>
    <message>
        <source>Recovery</source>
        <translation>Wiederherstellung</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Ausgeblendet</translation>
    </message>
    <message>
        <source>Low space</source>
        <translation>Wenig Speicherplatz</translation>
    </message>
    <message>
        <source>BitLocker</source>
        <translation>BitLocker</translation>
    </message>
    <message>
        <source>BitLocker unlocked</source>
        <translation>BitLocker entsperrt</translation>
    </message>
    <message>
        <source>BitLocker locked</source>
        <translation>BitLocker gesperrt</translation>
    </message>
    <message>
        <source>EFI system</source>
        <translation>EFI-System</translation>
    </message>
    <message>
        <source>no file system</source>
        <translation>kein Dateisystem</translation>
    </message>
    <message>
        <source>no table</source>
        <translation>keine Tabelle</translation>
    </message>
    <message>
        <source>Health errors</source>
        <translation>Zustandsfehler</translation>
    </message>
    <message>
        <source>Removable</source>
        <translation>Wechselmedium</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Frei</translation>
    </message>
    <message>
        <source>Partition %1</source>
        <translation>Partition %1</translation>
    </message>
    <message>
        <source>Logical</source>
        <translation>Logisch</translation>
    </message>
    <message>
        <source>%1 used, %2 free</source>
        <translation>%1 belegt, %2 frei</translation>
    </message>
    <message>
        <source>from sector %1</source>
        <translation>ab Sektor %1</translation>
    </message>
    <message>
        <source>system, from its drive</source>
        <translation>System, von seinem Laufwerk</translation>
    </message>
    <message>
        <source>system, from its disk</source>
        <translation>System, von seinem Datenträger</translation>
    </message>
    <message>
        <source>disk to disk</source>
        <translation>Datenträger auf Datenträger</translation>
    </message>
    <message>
        <source>partition to partition</source>
        <translation>Partition auf Partition</translation>
    </message>
    <message>
        <source>to be chosen</source>
        <translation>noch auszuwählen</translation>
    </message>
    <message>
        <source>unknown, the disk is offline</source>
        <translation>unbekannt, der Datenträger ist offline</translation>
    </message>
    <message>
        <source>the disk reports errors</source>
        <translation>der Datenträger meldet Fehler</translation>
    </message>
    <message>
        <source>good</source>
        <translation>gut</translation>
    </message>
    <message>
        <source>ISO file</source>
        <translation>ISO-Datei</translation>
    </message>
    <message>
        <source>Windows installer</source>
        <translation>Windows-Installationsmedium</translation>
    </message>
    <message>
        <source>USB disk</source>
        <translation>USB-Datenträger</translation>
    </message>
    <message>
        <source>Partition recovery: %1</source>
        <translation>Partitionswiederherstellung: %1</translation>
    </message>
    <message>
        <source>Boot media: %1</source>
        <translation>Rettungsmedium: %1</translation>
    </message>
    <message>
        <source>%1 used</source>
        <translation>%1 belegt</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>Becomes</source>
        <translation>Wird zu</translation>
    </message>
    <message>
        <source>Search in</source>
        <translation>Suche in</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>Datenträger</translation>
    </message>
    <message>
        <source>Capacity</source>
        <translation>Kapazität</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Health</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Reset a Windows password</source>
        <translation>Windows-Kennwort zurücksetzen</translation>
    </message>
    <message>
        <source>Repair the Windows start</source>
        <translation>Windows-Start reparieren</translation>
    </message>
    <message>
        <source>Set or clear write protection</source>
        <translation>Schreibschutz setzen oder aufheben</translation>
    </message>
    <message>
        <source>Rebuild the MBR</source>
        <translation>MBR neu erstellen</translation>
    </message>
    <message>
        <source>Align to 4 KiB</source>
        <translation>An 4 KiB ausrichten</translation>
    </message>
    <message>
        <source>Check for Windows 11</source>
        <translation>Auf Windows 11 prüfen</translation>
    </message>
    <message>
        <source>Look for bad sectors</source>
        <translation>Nach fehlerhaften Sektoren suchen</translation>
    </message>
    <message>
        <source>Find the BitLocker recovery key</source>
        <translation>BitLocker-Wiederherstellungsschlüssel suchen</translation>
    </message>
    <message>
        <source>Check the file system</source>
        <translation>Dateisystem prüfen</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>function %1</source>
        <translation>Funktion %1</translation>
    </message>
    <message>
        <source>The host is closing.</source>
        <translation>Das Programm wird beendet.</translation>
    </message>
    <message>
        <source>The task failed after %1%, as --fail requests.</source>
        <translation>Die Aufgabe ist nach %1% fehlgeschlagen, wie mit --fail verlangt.</translation>
    </message>
    <message>
        <source>call</source>
        <translation>Aufruf</translation>
    </message>
    <message>
        <source>Gate</source>
        <translation>Schranke</translation>
    </message>
    <message>
        <source>boot media</source>
        <translation>Rettungsmedium</translation>
    </message>
    <message>
        <source>Boot media cannot be created there.</source>
        <translation>Dort kann kein Rettungsmedium erstellt werden.</translation>
    </message>
    <message>
        <source>Disk health: disk %1</source>
        <translation>Datenträgerzustand: Datenträger %1</translation>
    </message>
    <message>
        <source>toolbox %1</source>
        <translation>Werkzeug %1</translation>
    </message>
    <message>
        <source>Toolbox: %1</source>
        <translation>Werkzeug: %1</translation>
    </message>
    <message>
        <source>The program %1 is not installed.</source>
        <translation>Das Programm %1 ist nicht installiert.</translation>
    </message>
    <message>
        <source>The disk service cannot create %1 file systems.</source>
        <translation>Der Datenträgerdienst kann keine %1-Dateisysteme erstellen.</translation>
    </message>
    <message>
        <source>The disk service cannot resize %1 file systems.</source>
        <translation>Der Datenträgerdienst kann die Größe von %1-Dateisystemen nicht ändern.</translation>
    </message>
    <message>
        <source>The disk service chooses the cluster size itself.</source>
        <translation>Der Datenträgerdienst wählt die Clustergröße selbst.</translation>
    </message>
    <message>
        <source>The disk service is not running.</source>
        <translation>Der Datenträgerdienst läuft nicht.</translation>
    </message>
    <message>
        <source>The file %1 cannot be read: %2.</source>
        <translation>Die Datei %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The file %1 is damaged, so its content is ignored.</source>
        <translation>Die Datei %1 ist beschädigt, daher wird ihr Inhalt nicht beachtet.</translation>
    </message>
    <message>
        <source>The file %1 cannot be written: %2.</source>
        <translation>Die Datei %1 kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>The image %1 stays attached as %2: %3</source>
        <translation>Die Abbilddatei %1 bleibt als %2 angeschlossen: %3</translation>
    </message>
    <message>
        <source>The image %1 was still attached as %2 by a host that ended unexpectedly. The device is used again.</source>
        <translation>Die Abbilddatei %1 war noch als %2 angeschlossen, weil ein Host unerwartet beendet wurde. Das Gerät wird wieder verwendet.</translation>
    </message>
    <message>
        <source>The disk service has ended or does not answer.</source>
        <translation>Der Datenträgerdienst wurde beendet oder antwortet nicht.</translation>
    </message>
    <message>
        <source>The disk is no longer attached.</source>
        <translation>Der Datenträger ist nicht mehr angeschlossen.</translation>
    </message>
    <message>
        <source>%1 holds a mounted file system (%2).</source>
        <translation>%1 enthält ein eingehängtes Dateisystem (%2).</translation>
    </message>
    <message>
        <source>%1 holds active swap space.</source>
        <translation>%1 enthält aktiven Auslagerungsspeicher.</translation>
    </message>
    <message>
        <source>%1 is a physical volume of LVM.</source>
        <translation>%1 ist ein physischer Datenträger von LVM.</translation>
    </message>
    <message>
        <source>%1 is a member of a RAID.</source>
        <translation>%1 ist Mitglied eines RAID-Verbunds.</translation>
    </message>
    <message>
        <source>%1 is an encrypted volume that is open.</source>
        <translation>%1 ist ein geöffneter verschlüsselter Datenträger.</translation>
    </message>
    <message>
        <source>The partition has changed since the order was accepted.</source>
        <translation>Die Partition hat sich geändert, seit der Auftrag angenommen wurde.</translation>
    </message>
    <message>
        <source>The file system could not be repaired.</source>
        <translation>Das Dateisystem konnte nicht repariert werden.</translation>
    </message>
    <message>
        <source>The partitions of the disk have changed since the order was accepted.</source>
        <translation>Die Partitionen des Datenträgers haben sich geändert, seit der Auftrag angenommen wurde.</translation>
    </message>
    <message>
        <source>The disk holds data without a partition table.</source>
        <translation>Der Datenträger enthält Daten ohne Partitionstabelle.</translation>
    </message>
    <message>
        <source>%1 holds a file system without a partition table.</source>
        <translation>%1 enthält ein Dateisystem ohne Partitionstabelle.</translation>
    </message>
    <message>
        <source>The partition table of %1 is damaged or of an unsupported type (%2).</source>
        <translation>Die Partitionstabelle von %1 ist beschädigt oder von einem nicht unterstützten Typ (%2).</translation>
    </message>
    <message>
        <source>The disk service cannot check %1 file systems.</source>
        <translation>Der Datenträgerdienst kann %1-Dateisysteme nicht prüfen.</translation>
    </message>
    <message>
        <source>The disk can be neither powered off nor ejected.</source>
        <translation>Der Datenträger kann weder ausgeschaltet noch ausgeworfen werden.</translation>
    </message>
    <message>
        <source>The disk service creates FAT32 only on drives of 512 MiB or more.</source>
        <translation>Der Datenträgerdienst legt FAT32 nur auf Laufwerken ab 512 MiB an.</translation>
    </message>
    <message>
        <source>The disk service creates FAT32 instead on drives of 512 MiB or more.</source>
        <translation>Der Datenträgerdienst legt auf Laufwerken ab 512 MiB stattdessen FAT32 an.</translation>
    </message>
    <message>
        <source>The disk service cannot resize FAT file systems safely.</source>
        <translation>Der Datenträgerdienst kann die Größe von FAT-Dateisystemen nicht sicher ändern.</translation>
    </message>
    <message>
        <source>The start of a drive would move, which no safe tool does on a real disk.</source>
        <translation>Der Anfang eines Laufwerks würde sich verschieben; auf einem echten Datenträger leistet das kein sicheres Werkzeug.</translation>
    </message>
    <message>
        <source>Only the free space directly after a drive can be added to it on a real disk.</source>
        <translation>Auf einem echten Datenträger kann einem Laufwerk nur der freie Platz direkt dahinter hinzugefügt werden.</translation>
    </message>
    <message>
        <source>An MBR disk has no hidden type for this file system.</source>
        <translation>Ein MBR-Datenträger hat keinen versteckten Typ für dieses Dateisystem.</translation>
    </message>
    <message>
        <source>The disk has partitions, and no safe tool converts an MBR disk to a GPT disk with its partitions.</source>
        <translation>Der Datenträger hat Partitionen, und kein sicheres Werkzeug konvertiert einen MBR-Datenträger mit seinen Partitionen in einen GPT-Datenträger.</translation>
    </message>
    <message>
        <source>The disk has partitions, and no safe tool converts a GPT disk to an MBR disk with its partitions.</source>
        <translation>Der Datenträger hat Partitionen, und kein sicheres Werkzeug konvertiert einen GPT-Datenträger mit seinen Partitionen in einen MBR-Datenträger.</translation>
    </message>
    <message>
        <source>The extended partition still has logical drives.</source>
        <translation>Die erweiterte Partition hat noch logische Laufwerke.</translation>
    </message>
    <message>
        <source>The file system has errors.</source>
        <translation>Das Dateisystem hat Fehler.</translation>
    </message>
    <message>
        <source>Drives of real disks cannot be merged: no safe tool moves the files of one drive to the other.</source>
        <translation>Laufwerke auf echten Datenträgern können nicht zusammengeführt werden: Kein sicheres Werkzeug verschiebt die Dateien des einen Laufwerks auf das andere.</translation>
    </message>
    <message>
        <source>No safe tool changes a logical drive of a real disk to a primary drive.</source>
        <translation>Kein sicheres Werkzeug wandelt ein logisches Laufwerk eines echten Datenträgers in ein primäres um.</translation>
    </message>
    <message>
        <source>No safe tool changes a primary drive of a real disk to a logical drive.</source>
        <translation>Kein sicheres Werkzeug wandelt ein primäres Laufwerk eines echten Datenträgers in ein logisches um.</translation>
    </message>
    <message>
        <source>No safe tool changes the cluster size of a drive on a real disk and keeps its files.</source>
        <translation>Kein sicheres Werkzeug ändert die Clustergröße eines Laufwerks auf einem echten Datenträger und erhält dabei seine Dateien.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to NTFS and keeps its files.</source>
        <translation>Kein sicheres Werkzeug konvertiert ein Laufwerk eines echten Datenträgers in NTFS und erhält dabei seine Dateien.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to FAT and keeps its files.</source>
        <translation>Kein sicheres Werkzeug konvertiert ein Laufwerk eines echten Datenträgers in FAT und erhält dabei seine Dateien.</translation>
    </message>
    <message>
        <source>No safe tool converts a drive of a real disk to exFAT and keeps its files.</source>
        <translation>Kein sicheres Werkzeug konvertiert ein Laufwerk eines echten Datenträgers in exFAT und erhält dabei seine Dateien.</translation>
    </message>
    <message>
        <source>No safe tool moves the data of a system drive to another real disk.</source>
        <translation>Kein sicheres Werkzeug verschiebt die Daten eines Systemlaufwerks auf einen anderen echten Datenträger.</translation>
    </message>
    <message>
        <source>Real disks are always online under this operating system.</source>
        <translation>Echte Datenträger sind unter diesem Betriebssystem immer online.</translation>
    </message>
    <message>
        <source>The disk service cannot convert dynamic disks to basic disks.</source>
        <translation>Der Datenträgerdienst kann dynamische Datenträger nicht in Basisdatenträger konvertieren.</translation>
    </message>
    <message>
        <source>The disk service cannot create dynamic disks.</source>
        <translation>Der Datenträgerdienst kann keine dynamischen Datenträger anlegen.</translation>
    </message>
    <message>
        <source>The host has no system files for a real boot medium.</source>
        <translation>Der Host hat keine Systemdateien für ein echtes Startmedium.</translation>
    </message>
    <message>
        <source>The host has no pre-OS environment to install on a real disk.</source>
        <translation>Der Host hat keine Pre-OS-Umgebung, die er auf einem echten Datenträger installieren könnte.</translation>
    </message>
    <message>
        <source>The host cannot remove a pre-OS environment from a real disk.</source>
        <translation>Der Host kann eine Pre-OS-Umgebung nicht von einem echten Datenträger entfernen.</translation>
    </message>
    <message>
        <source>The disk service cannot search real disks for lost partitions.</source>
        <translation>Der Datenträgerdienst kann auf echten Datenträgern nicht nach verlorenen Partitionen suchen.</translation>
    </message>
    <message>
        <source>The disk service cannot change the write protection of a real disk.</source>
        <translation>Der Datenträgerdienst kann den Schreibschutz eines echten Datenträgers nicht ändern.</translation>
    </message>
    <message>
        <source>The disk service cannot write the boot code of a real disk.</source>
        <translation>Der Datenträgerdienst kann den Startcode eines echten Datenträgers nicht schreiben.</translation>
    </message>
    <message>
        <source>Real disks cannot be aligned: no safe tool moves the start of a partition.</source>
        <translation>Echte Datenträger können nicht ausgerichtet werden: Kein sicheres Werkzeug verschiebt den Anfang einer Partition.</translation>
    </message>
    <message>
        <source>Move free space between partitions</source>
        <translation>Freien Platz zwischen Partitionen verschieben</translation>
    </message>
    <message>
        <source>Delete all partitions of the disk</source>
        <translation>Alle Partitionen des Datenträgers löschen</translation>
    </message>
    <message>
        <source>Write a new partition table</source>
        <translation>Neue Partitionstabelle schreiben</translation>
    </message>
    <message>
        <source>Overwrite the whole disk</source>
        <translation>Gesamten Datenträger überschreiben</translation>
    </message>
    <message>
        <source>Shrink a partition</source>
        <translation>Partition verkleinern</translation>
    </message>
    <message>
        <source>Format a partition</source>
        <translation>Partition formatieren</translation>
    </message>
    <message>
        <source>Delete a partition</source>
        <translation>Partition löschen</translation>
    </message>
    <message>
        <source>Split a partition</source>
        <translation>Partition teilen</translation>
    </message>
    <message>
        <source>Merge two partitions</source>
        <translation>Zwei Partitionen zusammenführen</translation>
    </message>
    <message>
        <source>Take space from a partition</source>
        <translation>Einer Partition Platz entnehmen</translation>
    </message>
    <message>
        <source>Overwrite a partition</source>
        <translation>Partition überschreiben</translation>
    </message>
    <message>
        <source>Convert a partition</source>
        <translation>Partition umwandeln</translation>
    </message>
    <message>
        <source>Change the cluster size</source>
        <translation>Clustergröße ändern</translation>
    </message>
    <message>
        <source>Move the data of a drive</source>
        <translation>Daten eines Laufwerks verschieben</translation>
    </message>
    <message>
        <source>Divide the disk into new partitions</source>
        <translation>Datenträger in neue Partitionen aufteilen</translation>
    </message>
    <message>
        <source>Format the whole disk (low level)</source>
        <translation>Gesamten Datenträger formatieren (Low-Level)</translation>
    </message>
    <message>
        <source>Clone onto the disk</source>
        <translation>Auf den Datenträger klonen</translation>
    </message>
    <message>
        <source>Clone onto the partition</source>
        <translation>Auf die Partition klonen</translation>
    </message>
    <message>
        <source>Convert the disk</source>
        <translation>Datenträger umwandeln</translation>
    </message>
    <message>
        <source>Create a boot medium</source>
        <translation>Startmedium erstellen</translation>
    </message>
    <message>
        <source>Change the partition table</source>
        <translation>Partitionstabelle ändern</translation>
    </message>
    <message>
        <source>Move the partitions of the disk</source>
        <translation>Partitionen des Datenträgers verschieben</translation>
    </message>
    <message>
        <source>Check and repair a file system</source>
        <translation>Dateisystem prüfen und reparieren</translation>
    </message>
    <message>
        <source>Change the disk</source>
        <translation>Datenträger ändern</translation>
    </message>
    <message>
        <source>The disk changed while the confirmation was open. Nothing has been written.</source>
        <translation>Der Datenträger hat sich während der Bestätigung geändert. Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>This order destroys data on a disk and needs a confirmation in the window. Start the host with a window, or with --unattended.</source>
        <translation>Dieser Auftrag zerstört Daten auf einem Datenträger und muss im Fenster bestätigt werden. Starten Sie das Programm mit einem Fenster oder mit --unattended.</translation>
    </message>
    <message>
        <source>The disk service created the partition at another position.</source>
        <translation>Der Datenträgerdienst hat die Partition an einer anderen Stelle angelegt.</translation>
    </message>
    <message>
        <source>The disk service cannot create a logical drive between two others.</source>
        <translation>Der Datenträgerdienst kann kein logisches Laufwerk zwischen zwei anderen anlegen.</translation>
    </message>
    <message>
        <source>Another disk has taken the place of this disk.</source>
        <translation>Ein anderer Datenträger hat den Platz dieses Datenträgers eingenommen.</translation>
    </message>
    <message>
        <source>The source cannot be read after byte %1 of the partition: %2.</source>
        <translation>Die Quelle kann nach Byte %1 der Partition nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The destination cannot be written after byte %1 of the partition: %2.</source>
        <translation>Das Ziel kann nach Byte %1 der Partition nicht beschrieben werden: %2.</translation>
    </message>
    <message>
        <source>The copy cannot be read after byte %1 of the partition: %2.</source>
        <translation>Die Kopie kann nach Byte %1 der Partition nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The copy differs from the source at byte %1 of the partition.</source>
        <translation>Die Kopie weicht bei Byte %1 der Partition von der Quelle ab.</translation>
    </message>
    <message>
        <source>All blocks are copied, so the destination must be as large as the source.</source>
        <translation>Es werden alle Blöcke kopiert, daher muss das Ziel so groß wie die Quelle sein.</translation>
    </message>
    <message>
        <source>A copy of a %1 volume would have the same identifier as the original, because no tool changes it.</source>
        <translation>Eine Kopie eines %1-Volumes hätte dieselbe Kennung wie das Original, weil kein Werkzeug sie ändert.</translation>
    </message>
    <message>
        <source>Unreadable sectors: %1. The first one is sector %2 of the disk, the last one is sector %3.</source>
        <translation>Unlesbare Sektoren: %1. Der erste ist Sektor %2 des Datenträgers, der letzte ist Sektor %3.</translation>
    </message>
    <message>
        <source>The host does not know which partitions of a real disk belong to an operating system.</source>
        <translation>Der Host weiß nicht, welche Partitionen eines echten Datenträgers zu einem Betriebssystem gehören.</translation>
    </message>
    <message>
        <source>The identifier of the copy cannot be changed: %1</source>
        <translation>Die Kennung der Kopie kann nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1 s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1 min</translation>
    </message>
    <message>
        <source>about %1 h left</source>
        <translation>noch etwa %1 h</translation>
    </message>
    <message>
        <source>client on port %1</source>
        <translation>Client an Port %1</translation>
    </message>
    <message>
        <source>process %1</source>
        <translation>Prozess %1</translation>
    </message>
    <message>
        <source>one of %1 clients</source>
        <translation>einer von %1 Clients</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search disks: name, letter, label, file system</source>
        <translation>Datenträger suchen: Name, Buchstabe, Bezeichnung, Dateisystem</translation>
    </message>
    <message>
        <source>Search disks</source>
        <translation>Datenträger suchen</translation>
    </message>
</context>
<context>
    <name>Segment</name>
    <message>
        <source>Target</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Quelle</translation>
    </message>
</context>
<context>
    <name>SegmentMenu</name>
    <message>
        <source>Copy: %1</source>
        <translation>Kopieren: %1</translation>
    </message>
    <message>
        <source>Show the history of drive %1</source>
        <translation>Verlauf von Laufwerk %1 anzeigen</translation>
    </message>
</context>
<context>
    <name>TestPanel</name>
    <message>
        <source>Testing</source>
        <translation>Zum Testen</translation>
    </message>
    <message>
        <source>Windows 11 checker</source>
        <translation>Windows-11-Prüfung</translation>
    </message>
    <message>
        <source>Dialog open</source>
        <translation>Dialog offen</translation>
    </message>
</context>
<context>
    <name>TimelinePane</name>
    <message>
        <source>The agent has not called a tool yet.</source>
        <translation>Der Agent hat noch kein Werkzeug aufgerufen.</translation>
    </message>
    <message>
        <source>No call names drive %1.</source>
        <translation>Kein Aufruf nennt Laufwerk %1.</translation>
    </message>
    <message>
        <source>Calls of the agent</source>
        <translation>Aufrufe des Agenten</translation>
    </message>
</context>
<context>
    <name>TimelineRow</name>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>queued</source>
        <translation>eingereiht</translation>
    </message>
    <message>
        <source>rejected</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>answered</source>
        <translation>beantwortet</translation>
    </message>
    <message>
        <source>held</source>
        <translation>aufgehalten</translation>
    </message>
    <message numerus="yes">
        <source>rejected %n time(s)</source>
        <translation>
            <numerusform>%n-mal abgelehnt</numerusform>
            <numerusform>%n-mal abgelehnt</numerusform>
        </translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Sandbox host: %1 (real disks)</source>
        <translation>Sandbox-Host: %1 (echte Datenträger)</translation>
    </message>
    <message>
        <source>Sandbox host (simulation)</source>
        <translation>Sandbox-Host (Simulation)</translation>
    </message>
    <message>
        <source>Sandbox host: %1 (simulation)</source>
        <translation>Sandbox-Host: %1 (Simulation)</translation>
    </message>
</context>
</TS>
