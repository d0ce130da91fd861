<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>RecordFileSaver</name>
    <message>
        <source>its last line is cut off</source>
        <translation>ihre letzte Zeile ist abgeschnitten</translation>
    </message>
    <message>
        <source>Recording not saved</source>
        <translation>Aufzeichnung nicht gespeichert</translation>
    </message>
    <message>
        <source>No file name was given.
Name the file to save to.</source>
        <translation>Es wurde kein Dateiname angegeben.
Nennen Sie die Datei, in die gespeichert werden soll.</translation>
    </message>
    <message>
        <source>%1 is a directory.
Add the name of a file to it.</source>
        <translation>%1 ist ein Verzeichnis.
Hängen Sie einen Dateinamen an.</translation>
    </message>
    <message>
        <source>%1 is a symbolic link to a file that does not exist.
Remove the link, or choose another file.</source>
        <translation>%1 ist eine symbolische Verknüpfung auf eine Datei, die es nicht gibt.
Entfernen Sie die Verknüpfung oder wählen Sie eine andere Datei.</translation>
    </message>
    <message>
        <source>%1 is not a regular file and cannot be replaced.
Choose another file.</source>
        <translation>%1 ist keine gewöhnliche Datei und kann nicht ersetzt werden.
Wählen Sie eine andere Datei.</translation>
    </message>
    <message>
        <source>The directory %1 does not exist.
Create it, or choose another.</source>
        <translation>Das Verzeichnis %1 gibt es nicht.
Legen Sie es an oder wählen Sie ein anderes.</translation>
    </message>
    <message>
        <source>You may not create files in %1.
Choose another directory, or change its permissions.</source>
        <translation>Sie dürfen in %1 keine Dateien anlegen.
Wählen Sie ein anderes Verzeichnis oder ändern Sie seine Zugriffsrechte.</translation>
    </message>
    <message>
        <source>There is no recording.
Start and stop one first.</source>
        <translation>Es gibt keine Aufzeichnung.
Starten und beenden Sie zuerst eine.</translation>
    </message>
    <message>
        <source>The record file holds no complete line.
Make room on the disk of %1 and record again.</source>
        <translation>Die Aufzeichnungsdatei enthält keine vollständige Zeile.
Schaffen Sie Platz auf dem Datenträger von %1 und zeichnen Sie erneut auf.</translation>
    </message>
    <message>
        <source>%1 exists already.
Choose another file, or replace it.</source>
        <translation>%1 gibt es schon.
Wählen Sie eine andere Datei oder ersetzen Sie diese.</translation>
    </message>
    <message>
        <source>The recording is kept in %1.</source>
        <translation>Die Aufzeichnung liegt weiterhin in %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2.
Make room on the disk, or choose another file.</source>
        <translation>%1 konnte nicht geschrieben werden: %2.
Schaffen Sie Platz auf dem Datenträger oder wählen Sie eine andere Datei.</translation>
    </message>
    <message>
        <source>Recording incomplete</source>
        <translation>Aufzeichnung unvollständig</translation>
    </message>
    <message>
        <source>The record file could not be written to its end (%1). Complete rows saved in %2: %3; what came after them is lost.
Make room on the disk of %4 before you record again.</source>
        <translation>Die Aufzeichnungsdatei konnte nicht bis zum Ende geschrieben werden (%1). Vollständige Zeilen, gespeichert in %2: %3; was danach kam, ist verloren.
Schaffen Sie Platz auf dem Datenträger von %4, bevor Sie wieder aufzeichnen.</translation>
    </message>
</context>
<context>
    <name>RecordReader</name>
    <message>
        <source>a quote is inside a field that does not begin with one</source>
        <translation>ein Anführungszeichen steht in einem Feld, das nicht damit beginnt</translation>
    </message>
    <message>
        <source>a quoted text is followed by neither a semicolon nor the end of the line</source>
        <translation>auf einen Text in Anführungszeichen folgt weder ein Semikolon noch das Ende der Zeile</translation>
    </message>
    <message>
        <source>the file does not begin with &quot;Time&quot;, so it is not a record file</source>
        <translation>die Datei beginnt nicht mit &quot;Time&quot; und ist deshalb keine Aufzeichnung</translation>
    </message>
    <message>
        <source>the name of a column is not quoted</source>
        <translation>der Name einer Spalte steht nicht in Anführungszeichen</translation>
    </message>
    <message>
        <source>the name of a column is not UTF-8</source>
        <translation>der Name einer Spalte ist kein UTF-8</translation>
    </message>
    <message>
        <source>the time is not a number</source>
        <translation>die Zeit ist keine Zahl</translation>
    </message>
    <message>
        <source>a text is not UTF-8</source>
        <translation>ein Text ist kein UTF-8</translation>
    </message>
    <message>
        <source>a cell is neither a number nor &quot;true&quot;, &quot;false&quot; or quoted</source>
        <translation>eine Zelle ist weder eine Zahl noch &quot;true&quot;, &quot;false&quot; oder ein Text in Anführungszeichen</translation>
    </message>
    <message>
        <source>the line is longer than 1 GiB</source>
        <translation>die Zeile ist länger als 1 GiB</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>die Datei kann nicht gelesen werden: %1</translation>
    </message>
</context>
<context>
    <name>Velk::CataloguePanel</name>
    <message>
        <source>Search keys, for example Arm/*/Position</source>
        <translation>Schlüssel suchen, z. B. Arm/*/Position</translation>
    </message>
    <message>
        <source>Search keys</source>
        <translation>Schlüssel suchen</translation>
    </message>
    <message>
        <source>Type a part of a name; * matches any text, ? one character. Enter watches the only key that is left.</source>
        <translation>Geben Sie einen Teil eines Namens ein; * steht für beliebigen Text, ? für ein Zeichen. Die Eingabetaste beobachtet den einzigen Schlüssel, der übrig ist.</translation>
    </message>
    <message>
        <source>The text is a regular expression</source>
        <translation>Der Text ist ein regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Tree</source>
        <translation>Baum</translation>
    </message>
    <message>
        <source>Show the keys as a tree by name, or as a table</source>
        <translation>Die Schlüssel als Baum nach Namen zeigen oder als Tabelle</translation>
    </message>
    <message>
        <source>Number of keys that are shown</source>
        <translation>Anzahl der gezeigten Schlüssel</translation>
    </message>
    <message>
        <source>Name of any other key</source>
        <translation>Name eines anderen Schlüssels</translation>
    </message>
    <message>
        <source>Name of a key to watch</source>
        <translation>Name eines Schlüssels, der beobachtet werden soll</translation>
    </message>
    <message>
        <source>A key that the robot does not list is watched all the same, and has values once it exists.</source>
        <translation>Ein Schlüssel, den der Roboter nicht aufführt, wird trotzdem beobachtet und hat Werte, sobald es ihn gibt.</translation>
    </message>
    <message>
        <source>&amp;Watch</source>
        <translation>&amp;Beobachten</translation>
    </message>
    <message>
        <source>Watch the key of this name</source>
        <translation>Den Schlüssel dieses Namens beobachten</translation>
    </message>
    <message>
        <source>Keys of the robot</source>
        <translation>Schlüssel des Roboters</translation>
    </message>
    <message>
        <source>Show the keys of nature %1</source>
        <translation>Die Schlüssel der Art %1 zeigen</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>Suche läuft …</translation>
    </message>
    <message>
        <source>%L1 of %L2 keys</source>
        <translation>%L1 von %L2 Schlüsseln</translation>
    </message>
</context>
<context>
    <name>Velk::ColorTheme</name>
    <message>
        <source>As the desktop</source>
        <translation>Wie die Arbeitsumgebung</translation>
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
        <source>High contrast</source>
        <translation>Hoher Kontrast</translation>
    </message>
</context>
<context>
    <name>Velk::ConnectionStatus</name>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>Disconnected for %1</source>
        <translation>Getrennt seit %1</translation>
    </message>
    <message>
        <source>Connecting for %1</source>
        <translation>Verbindungsaufbau seit %1</translation>
    </message>
    <message>
        <source>Connected for %1</source>
        <translation>Verbunden seit %1</translation>
    </message>
    <message>
        <source>Connection lost for %1, trying again</source>
        <translation>Verbindung verloren seit %1, neuer Versuch läuft</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <translation>%1 d %2 h</translation>
    </message>
</context>
<context>
    <name>Velk::DisplayedMemoryKeyListModel</name>
    <message>
        <source>Not connected to a robot</source>
        <translation>Mit keinem Roboter verbunden</translation>
    </message>
    <message>
        <source>Cannot retrieve memory value if no robot is connected.</source>
        <translation>Ohne verbundenen Roboter lassen sich keine Werte des Speichers abrufen.</translation>
    </message>
    <message>
        <source>Missing memory interface</source>
        <translation>Speicherdienst fehlt</translation>
    </message>
    <message>
        <source>Cannot retrieve memory values as no memory interface was found.</source>
        <translation>Die Werte des Speichers lassen sich nicht abrufen, weil kein Speicherdienst gefunden wurde.</translation>
    </message>
    <message>
        <source>Could not open temporary file for writing.
Please check your permissions for accessing %1</source>
        <translation>Die temporäre Datei konnte nicht zum Schreiben geöffnet werden.
Bitte prüfen Sie Ihre Zugriffsrechte für %1</translation>
    </message>
    <message>
        <source>Could not write data.
Your disk may be full or inaccessible.
Please check your permissions.</source>
        <translation>Die Daten konnten nicht geschrieben werden.
Der Datenträger ist vielleicht voll oder nicht erreichbar.
Bitte prüfen Sie Ihre Zugriffsrechte.</translation>
    </message>
    <message>
        <source>Memory recording</source>
        <translation>Aufzeichnung des Speichers</translation>
    </message>
    <message>
        <source>Could not write data.
Your disk may be full or inaccessible.
Please move your recorded data to another disk.</source>
        <translation>Die Daten konnten nicht geschrieben werden.
Der Datenträger ist vielleicht voll oder nicht erreichbar.
Bitte verschieben Sie die aufgezeichneten Daten auf einen anderen Datenträger.</translation>
    </message>
</context>
<context>
    <name>Velk::EmbeddedLink</name>
    <message>
        <source>Connection lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>The robot is out of reach.
It is connected again when it is back.</source>
        <translation>Der Roboter ist nicht erreichbar.
Sobald er wieder da ist, wird er wieder verbunden.</translation>
    </message>
    <message>
        <source>Robot not in reach</source>
        <translation>Roboter nicht erreichbar</translation>
    </message>
    <message>
        <source>The robot is out of reach.
It is connected when it is back.</source>
        <translation>Der Roboter ist nicht erreichbar.
Sobald er wieder da ist, wird er verbunden.</translation>
    </message>
</context>
<context>
    <name>Velk::HostFactory</name>
    <message>
        <source>the computer that this program runs on</source>
        <translation>der Rechner, auf dem dieses Programm läuft</translation>
    </message>
</context>
<context>
    <name>Velk::HostFeed</name>
    <message>
        <source>This computer has no parameter “%1”. Its URL is written host: without any.</source>
        <translation>Dieser Rechner hat keinen Parameter „%1“. Seine URL lautet host: und hat keine Parameter.</translation>
    </message>
    <message>
        <source>“%1” is not the URL of this computer. It is written host: and nothing more.</source>
        <translation>„%1“ ist nicht die URL dieses Rechners. Sie lautet host: und sonst nichts.</translation>
    </message>
    <message>
        <source>No figures of this computer</source>
        <translation>Keine Messwerte dieses Rechners</translation>
    </message>
    <message>
        <source>Nothing can be read below /proc.
The figures are available on Linux, with /proc mounted.</source>
        <translation>Unter /proc lässt sich nichts lesen.
Die Messwerte gibt es unter Linux mit eingehängtem /proc.</translation>
    </message>
</context>
<context>
    <name>Velk::MainWindow</name>
    <message>
        <source>Robot memory</source>
        <translation>Roboterspeicher</translation>
    </message>
    <message>
        <source>Discard the recording?</source>
        <translation>Die Aufzeichnung verwerfen?</translation>
    </message>
    <message>
        <source>Keys of the robot</source>
        <translation>Schlüssel des Roboters</translation>
    </message>
    <message>
        <source>No robot</source>
        <translation>Kein Roboter</translation>
    </message>
    <message>
        <source>Connect to a robot first.</source>
        <translation>Verbinden Sie zuerst einen Roboter.</translation>
    </message>
    <message>
        <source>This robot cannot be opened</source>
        <translation>Dieser Roboter kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>%1 – Robot memory</source>
        <translation>%1 – Roboterspeicher</translation>
    </message>
    <message>
        <source>, sampling</source>
        <translation>, tastet ab</translation>
    </message>
    <message>
        <source>, nothing to sample</source>
        <translation>, nichts abzutasten</translation>
    </message>
    <message>
        <source>, sampling paused</source>
        <translation>, Abtastung angehalten</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>velk-watch %1

Shows the memory of a robot: its keys, their values as they change, and recordings of them.</source>
        <translation>velk-watch %1

Zeigt den Speicher eines Roboters: seine Schlüssel, ihre Werte, wie sie sich ändern, und Aufzeichnungen davon.</translation>
    </message>
    <message>
        <source>The previous recording is not saved.</source>
        <translation>Die vorige Aufzeichnung ist nicht gespeichert.</translation>
    </message>
    <message>
        <source>The settings could not be written to %1.</source>
        <translation>Die Einstellungen konnten nicht nach %1 geschrieben werden.</translation>
    </message>
    <message>
        <source>A recording is running. It ends when the window is closed.</source>
        <translation>Eine Aufzeichnung läuft. Sie endet, wenn das Fenster geschlossen wird.</translation>
    </message>
    <message>
        <source>The recording is not saved.</source>
        <translation>Die Aufzeichnung ist nicht gespeichert.</translation>
    </message>
</context>
<context>
    <name>Velk::MessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Dismiss this message (Escape)</source>
        <translation>Diese Meldung schließen (Esc)</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n weitere</numerusform>
            <numerusform>%n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::NetworkAddress</name>
    <message>
        <source>After the IPv6 address %1 only a port can follow: [::1]:%2.</source>
        <translation>Auf die IPv6-Adresse %1 kann nur ein Port folgen: [::1]:%2.</translation>
    </message>
    <message>
        <source>The bracket that opens the IPv6 address %1 is not closed.</source>
        <translation>Die Klammer, die die IPv6-Adresse %1 öffnet, ist nicht geschlossen.</translation>
    </message>
    <message>
        <source>The text in brackets, %1, is no IPv6 address.</source>
        <translation>Der Text in Klammern, %1, ist keine IPv6-Adresse.</translation>
    </message>
    <message>
        <source>An address has more than one colon: write an IPv6 address in brackets, [::1].</source>
        <translation>Eine Adresse hat mehr als einen Doppelpunkt: Schreiben Sie eine IPv6-Adresse in Klammern, [::1].</translation>
    </message>
    <message>
        <source>The host %1 is neither a host name nor an IP address.</source>
        <translation>Der Rechner %1 ist weder ein Rechnername noch eine IP-Adresse.</translation>
    </message>
    <message>
        <source>The port after the colon is not a number from 1 to 65535.</source>
        <translation>Der Port nach dem Doppelpunkt ist keine Zahl von 1 bis 65535.</translation>
    </message>
</context>
<context>
    <name>Velk::NetworkSecret</name>
    <message>
        <source>The password file %1 does not exist or is no regular file: correct the path in the URL.</source>
        <translation>Die Passwortdatei %1 gibt es nicht, oder sie ist keine gewöhnliche Datei: Berichtigen Sie den Pfad in der URL.</translation>
    </message>
    <message>
        <source>The password file %1 cannot be read (%2): check its permissions.</source>
        <translation>Die Passwortdatei %1 kann nicht gelesen werden (%2): Prüfen Sie ihre Zugriffsrechte.</translation>
    </message>
    <message>
        <source>The password file %1 is longer than %2 bytes: it must hold the password and nothing else.</source>
        <translation>Die Passwortdatei %1 ist länger als %2 Bytes: Sie darf nur das Passwort enthalten.</translation>
    </message>
    <message>
        <source>The password file %1 is empty: it must hold the password.</source>
        <translation>Die Passwortdatei %1 ist leer: Sie muss das Passwort enthalten.</translation>
    </message>
    <message>
        <source>The environment variable %1, which is to hold the password, is not set.</source>
        <translation>Die Umgebungsvariable %1, die das Passwort enthalten soll, ist nicht gesetzt.</translation>
    </message>
    <message>
        <source>The URL says in more than one way what the password is: keep one of the password before the &quot;@&quot;, the file and the environment variable.</source>
        <translation>Die URL sagt auf mehr als eine Weise, was das Passwort ist: Behalten Sie eines von Passwort vor dem „@“, Datei und Umgebungsvariable.</translation>
    </message>
</context>
<context>
    <name>Velk::NetworkUrl</name>
    <message>
        <source>This is no URL of %1: write %2.</source>
        <translation>Das ist keine URL %1: Schreiben Sie %2.</translation>
    </message>
    <message>
        <source>A URL of %1 holds no &quot;#&quot;: write it as %23.</source>
        <translation>Die URL %1 enthält kein „#“: Schreiben Sie es als %23.</translation>
    </message>
    <message>
        <source>The URL of %1 starts with one of %2.</source>
        <translation>Die URL %1 beginnt mit %2.</translation>
    </message>
    <message>
        <source>An &quot;@&quot; after the first &quot;/&quot;: in the password write / as %2F, ? as %3F and @ as %40, and in the robot&apos;s name @ as %40.</source>
        <translation>Ein „@“ nach dem ersten „/“: Schreiben Sie im Passwort / als %2F, ? als %3F und @ als %40 und im Namen des Roboters @ als %40.</translation>
    </message>
    <message>
        <source>The URL names no host: write %1://host/….</source>
        <translation>Die URL nennt keinen Rechner: Schreiben Sie %1://host/….</translation>
    </message>
    <message>
        <source>The user or the password before the &quot;@&quot; is not percent-encoded correctly: write % as %25.</source>
        <translation>Der Benutzer oder das Passwort vor dem „@“ ist nicht richtig prozentkodiert: Schreiben Sie % als %25.</translation>
    </message>
    <message>
        <source>There is no option %1; there are %2.</source>
        <translation>Es gibt keine Option %1; es gibt %2.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is given twice.</source>
        <translation>Die Option „%1“ ist zweimal angegeben.</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not percent-encoded UTF-8 text: write % as %25 and &amp; as %26.</source>
        <translation>Der Wert von „%1“ ist kein prozentkodierter UTF-8-Text: Schreiben Sie % als %25 und &amp; als %26.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; needs a value: %1=….</source>
        <translation>Die Option „%1“ braucht einen Wert: %1=….</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
</context>
<context>
    <name>Velk::PeriodText</name>
    <message>
        <source>%1 ms asked, this robot gives %2 ms and more: %3 ms in force</source>
        <translation>%1 ms verlangt, dieser Roboter bietet %2 ms und mehr: %3 ms gelten</translation>
    </message>
    <message>
        <source>%1 ms asked, this robot gives %2 ms at most: %3 ms in force</source>
        <translation>%1 ms verlangt, dieser Roboter bietet höchstens %2 ms: %3 ms gelten</translation>
    </message>
    <message>
        <source>%1 ms in force, below the %2 ms that this robot gives</source>
        <translation>%1 ms gelten, weniger als die %2 ms, die dieser Roboter bietet</translation>
    </message>
    <message>
        <source>%1 ms in force, this robot gives %2 ms and more</source>
        <translation>%1 ms gelten, dieser Roboter bietet %2 ms und mehr</translation>
    </message>
</context>
<context>
    <name>Velk::PlotCanvas</name>
    <message>
        <source>Seconds before now</source>
        <translation>Sekunden vor jetzt</translation>
    </message>
    <message>
        <source>Seconds before now (frozen)</source>
        <translation>Sekunden vor jetzt (angehalten)</translation>
    </message>
</context>
<context>
    <name>Velk::PlotCurve</name>
    <message>
        <source>event</source>
        <translation>Ereignis</translation>
    </message>
</context>
<context>
    <name>Velk::PlotPanel</name>
    <message>
        <source>&amp;Follow</source>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>Follow the newest values</source>
        <translation>Den neuesten Werten folgen</translation>
    </message>
    <message>
        <source>Follow the newest values, or freeze (Space)</source>
        <translation>Den neuesten Werten folgen oder anhalten (Leertaste)</translation>
    </message>
    <message>
        <source>To the past</source>
        <translation>In die Vergangenheit</translation>
    </message>
    <message>
        <source>To the past (Left)</source>
        <translation>In die Vergangenheit (Links)</translation>
    </message>
    <message>
        <source>To now</source>
        <translation>Zur Gegenwart</translation>
    </message>
    <message>
        <source>To now (Right)</source>
        <translation>Zur Gegenwart (Rechts)</translation>
    </message>
    <message>
        <source>Show a longer time</source>
        <translation>Längere Zeit zeigen</translation>
    </message>
    <message>
        <source>Show a longer time (-)</source>
        <translation>Längere Zeit zeigen (-)</translation>
    </message>
    <message>
        <source>Show a shorter time</source>
        <translation>Kürzere Zeit zeigen</translation>
    </message>
    <message>
        <source>Show a shorter time (+)</source>
        <translation>Kürzere Zeit zeigen (+)</translation>
    </message>
    <message>
        <source>Fi&amp;t</source>
        <translation>&amp;Einpassen</translation>
    </message>
    <message>
        <source>Show the newest values, all of them</source>
        <translation>Die neuesten Werte zeigen, und zwar alle</translation>
    </message>
    <message>
        <source>Show the newest values, all of them (Home)</source>
        <translation>Die neuesten Werte zeigen, und zwar alle (Pos1)</translation>
    </message>
</context>
<context>
    <name>Velk::PlotReadings</name>
    <message>
        <source>%1 s before now</source>
        <translation>vor %1 s</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiterer</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::PlotView</name>
    <message>
        <source>Plot of the watched keys</source>
        <translation>Diagramm der beobachteten Schlüssel</translation>
    </message>
    <message>
        <source>Nothing to plot yet: watch a key, and show it.</source>
        <translation>Noch nichts zu zeichnen: Beobachten Sie einen Schlüssel und zeigen Sie ihn.</translation>
    </message>
    <message>
        <source>The keys that are shown have no value yet that can be plotted.</source>
        <translation>Die gezeigten Schlüssel haben noch keinen Wert, der sich zeichnen lässt.</translation>
    </message>
</context>
<context>
    <name>Velk::RecordingControl</name>
    <message numerus="yes">
        <source>%L1 row(s)</source>
        <translation>
            <numerusform>%L1 Zeile</numerusform>
            <numerusform>%L1 Zeilen</numerusform>
        </translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation>Keine Aufzeichnung</translation>
    </message>
    <message>
        <source>Recording for %1, %2</source>
        <translation>Aufzeichnung seit %1, %2</translation>
    </message>
    <message>
        <source>Not saved: %1, %2</source>
        <translation>Nicht gespeichert: %1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%L1 row(s) were recorded.</source>
        <translation>
            <numerusform>%L1 Zeile wurde aufgezeichnet.</numerusform>
            <numerusform>%L1 Zeilen wurden aufgezeichnet.</numerusform>
        </translation>
    </message>
    <message>
        <source>Recording incomplete</source>
        <translation>Aufzeichnung unvollständig</translation>
    </message>
    <message>
        <source>Not all values could be written to %1: %2
Save what there is, and make room on that disk.</source>
        <translation>Nicht alle Werte konnten nach %1 geschrieben werden: %2
Speichern Sie, was da ist, und schaffen Sie Platz auf diesem Datenträger.</translation>
    </message>
    <message>
        <source>Recording ended</source>
        <translation>Aufzeichnung beendet</translation>
    </message>
    <message>
        <source>The recording ended because the connection was lost or the file could not be written. %1 Save them now.</source>
        <translation>Die Aufzeichnung endete, weil die Verbindung verloren ging oder die Datei nicht geschrieben werden konnte. %1 Speichern Sie jetzt.</translation>
    </message>
</context>
<context>
    <name>Velk::RecordingDialogs</name>
    <message>
        <source>Save recording</source>
        <translation>Aufzeichnung speichern</translation>
    </message>
    <message>
        <source>Recordings (*.csv);;All files (*)</source>
        <translation>Aufzeichnungen (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern …</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
</context>
<context>
    <name>Velk::RedisConnection</name>
    <message>
        <source>Redis: master switched</source>
        <translation>Redis: Master gewechselt</translation>
    </message>
    <message>
        <source>%1 is not the master of &quot;%2&quot; any more. The sentinels are asked for the new one.</source>
        <translation>%1 ist nicht mehr der Master von „%2“. Die Sentinels werden nach dem neuen gefragt.</translation>
    </message>
    <message>
        <source>Redis: no answer</source>
        <translation>Redis: keine Antwort</translation>
    </message>
    <message>
        <source>%1 has not answered for %2 seconds. Check the server and the network.</source>
        <translation>%1 antwortet seit %2 Sekunden nicht. Prüfen Sie den Server und das Netz.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisConnector</name>
    <message>
        <source>Redis: TLS not possible</source>
        <translation>Redis: TLS nicht möglich</translation>
    </message>
    <message>
        <source>Redis: no password</source>
        <translation>Redis: kein Passwort</translation>
    </message>
    <message>
        <source>Redis: no master</source>
        <translation>Redis: kein Master</translation>
    </message>
    <message>
        <source>The sentinel %1 knows no master of the service &quot;%2&quot;. Check the service&apos;s name in the URL.</source>
        <translation>Der Sentinel %1 kennt keinen Master des Dienstes „%2“. Prüfen Sie den Namen des Dienstes in der URL.</translation>
    </message>
    <message>
        <source>The sentinels name %1 as the master of &quot;%2&quot;, and it is none at present: a switch is under way. They are asked again.</source>
        <translation>Die Sentinels nennen %1 als Master von „%2“, und er ist derzeit keiner: Ein Wechsel läuft. Sie werden erneut gefragt.</translation>
    </message>
    <message>
        <source>Redis: no answer</source>
        <translation>Redis: keine Antwort</translation>
    </message>
    <message>
        <source>%1 did not answer within %2 seconds. Check the address, the network, and that no firewall swallows the connection.</source>
        <translation>%1 hat nicht innerhalb von %2 Sekunden geantwortet. Prüfen Sie die Adresse, das Netz und ob eine Firewall die Verbindung schluckt.</translation>
    </message>
    <message>
        <source>%1 does not take a user name or a password. Check that it is a Redis server, and leave out the password if it wants none.</source>
        <translation>%1 nimmt weder Benutzernamen noch Passwort an. Prüfen Sie, ob es ein Redis-Server ist, und lassen Sie das Passwort weg, wenn er keines verlangt.</translation>
    </message>
    <message>
        <source>Redis: password refused</source>
        <translation>Redis: Passwort abgelehnt</translation>
    </message>
    <message>
        <source>%1 did not answer within %2 seconds. Check the address, the network, and that the server&apos;s port speaks TLS.</source>
        <translation>%1 hat nicht innerhalb von %2 Sekunden geantwortet. Prüfen Sie die Adresse, das Netz und ob der Port des Servers TLS spricht.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisError</name>
    <message>
        <source>Redis: password refused</source>
        <translation>Redis: Passwort abgelehnt</translation>
    </message>
    <message>
        <source>Redis: not permitted</source>
        <translation>Redis: nicht erlaubt</translation>
    </message>
    <message>
        <source>Redis: key of another type</source>
        <translation>Redis: Schlüssel anderen Typs</translation>
    </message>
    <message>
        <source>Redis: server not available</source>
        <translation>Redis: Server nicht verfügbar</translation>
    </message>
    <message>
        <source>Redis: value too long</source>
        <translation>Redis: Wert zu lang</translation>
    </message>
    <message>
        <source>Redis: error</source>
        <translation>Redis: Fehler</translation>
    </message>
    <message>
        <source>%1 says that the robot&apos;s keys are on another node of its cluster (%2).</source>
        <translation>%1 sagt, dass die Schlüssel des Roboters auf einem anderen Knoten des Clusters liegen (%2).</translation>
    </message>
    <message>
        <source>%1 asks for a password. Give it in the URL as user:password@, with password-file or password-env, or in VELK_REDIS_PASSWORD.</source>
        <translation>%1 verlangt ein Passwort. Geben Sie es in der URL als user:password@ an, mit password-file oder password-env, oder in VELK_REDIS_PASSWORD.</translation>
    </message>
    <message>
        <source>%1 does not take the user name or the password (%2). Check both; the password may have been changed on the server.</source>
        <translation>%1 nimmt den Benutzernamen oder das Passwort nicht an (%2). Prüfen Sie beides; vielleicht wurde das Passwort auf dem Server geändert.</translation>
    </message>
    <message>
        <source>%1 does not permit this user what is needed (%2). Ask the server&apos;s administrator to allow it, with ACL SETUSER.</source>
        <translation>%1 erlaubt diesem Benutzer nicht, was nötig ist (%2). Bitten Sie den Verwalter des Servers, es mit ACL SETUSER zu erlauben.</translation>
    </message>
    <message>
        <source>A key on %1 holds a value of another type than the robot memory has there (%2). Check which program writes it.</source>
        <translation>Ein Schlüssel auf %1 enthält einen Wert anderen Typs, als der Roboterspeicher dort hat (%2). Prüfen Sie, welches Programm ihn schreibt.</translation>
    </message>
    <message>
        <source>%1 is still loading its data. It is asked again until it is ready.</source>
        <translation>%1 lädt noch seine Daten. Er wird gefragt, bis er bereit ist.</translation>
    </message>
    <message>
        <source>The cluster of %1 is down (%2). It is asked again; check the cluster&apos;s nodes.</source>
        <translation>Der Cluster von %1 ist ausgefallen (%2). Er wird erneut gefragt; prüfen Sie die Knoten des Clusters.</translation>
    </message>
    <message>
        <source>%1 is a replica and takes no writes (%2). Give the URL of the master, or its sentinels.</source>
        <translation>%1 ist eine Replik und nimmt keine Schreibzugriffe an (%2). Geben Sie die URL des Masters oder seine Sentinels an.</translation>
    </message>
    <message>
        <source>%1 cannot serve the robot now (%2). It is asked again.</source>
        <translation>%1 kann den Roboter derzeit nicht bedienen (%2). Er wird erneut gefragt.</translation>
    </message>
    <message>
        <source>A value on %1 is too long to be shown (%2 bytes).</source>
        <translation>Ein Wert auf %1 ist zu lang, um gezeigt zu werden (%2 Bytes).</translation>
    </message>
    <message>
        <source>%1 answered with an error: %2</source>
        <translation>%1 hat mit einem Fehler geantwortet: %2</translation>
    </message>
</context>
<context>
    <name>Velk::RedisFactory</name>
    <message>
        <source>a robot whose memory is on a Redis server, or in a cluster of them</source>
        <translation>ein Roboter, dessen Speicher auf einem Redis-Server oder in einem Cluster solcher liegt</translation>
    </message>
    <message>
        <source>the same over TLS</source>
        <translation>dasselbe über TLS</translation>
    </message>
    <message>
        <source>the same on the master that sentinels name</source>
        <translation>dasselbe auf dem Master, den Sentinels nennen</translation>
    </message>
    <message>
        <source>the same over TLS, with the sentinels</source>
        <translation>dasselbe über TLS, mit den Sentinels</translation>
    </message>
</context>
<context>
    <name>Velk::RedisKeyLists</name>
    <message>
        <source>The key %1 on %2 is not a set, so the robot&apos;s keys cannot be listed. Check which program writes it.</source>
        <translation>Der Schlüssel %1 auf %2 ist keine Menge, daher lassen sich die Schlüssel des Roboters nicht aufführen. Prüfen Sie, welches Programm ihn schreibt.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisKeyResolver</name>
    <message>
        <source>Redis: value too long</source>
        <translation>Redis: Wert zu lang</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; on %2 is %3 MiB long and is not fetched; at most %4 MiB are. It is looked at again from time to time.</source>
        <translation>Der Wert von „%1“ auf %2 ist %3 MiB lang und wird nicht geholt; höchstens %4 MiB werden es. Er wird von Zeit zu Zeit wieder angesehen.</translation>
    </message>
    <message>
        <source>Redis: key of another type</source>
        <translation>Redis: Schlüssel anderen Typs</translation>
    </message>
    <message>
        <source>The key %1 on %2 holds a %3; an event&apos;s key is a stream. Check which program writes it.</source>
        <translation>Der Schlüssel %1 auf %2 enthält %3; der eines Ereignisses ist ein Stream. Prüfen Sie, welches Programm ihn schreibt.</translation>
    </message>
    <message>
        <source>The key %1 on %2 holds a %3; a data key&apos;s is a string or a stream. Check which program writes it.</source>
        <translation>Der Schlüssel %1 auf %2 enthält %3; der eines Datums ist ein String oder ein Stream. Prüfen Sie, welches Programm ihn schreibt.</translation>
    </message>
    <message>
        <source>Redis: older data</source>
        <translation>Redis: ältere Daten</translation>
    </message>
    <message>
        <source>%1 has come back with older data: of %2, occurrences and samples from %3 to %4 may be missing.</source>
        <translation>%1 ist mit älteren Daten zurückgekommen: Von %2 fehlen vielleicht Ereignisse und Werte von %3 bis %4.</translation>
    </message>
    <message>
        <source>%1 keys</source>
        <translation>%1 Schlüsseln</translation>
    </message>
</context>
<context>
    <name>Velk::RedisReplyLimiter</name>
    <message>
        <source>a line of more than %1 bytes</source>
        <translation>eine Zeile von mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>a line that does not end with a carriage return and a line feed</source>
        <translation>eine Zeile, die nicht mit Wagenrücklauf und Zeilenvorschub endet</translation>
    </message>
    <message>
        <source>a reply that starts with the byte %1</source>
        <translation>eine Antwort, die mit dem Byte %1 beginnt</translation>
    </message>
    <message>
        <source>a value whose length is not a number</source>
        <translation>ein Wert, dessen Länge keine Zahl ist</translation>
    </message>
    <message>
        <source>a list whose length is not a number</source>
        <translation>eine Liste, deren Länge keine Zahl ist</translation>
    </message>
    <message>
        <source>a list of %1 elements</source>
        <translation>eine Liste mit %1 Elementen</translation>
    </message>
    <message>
        <source>lists within lists, more than %1 deep</source>
        <translation>Listen in Listen, mehr als %1 tief</translation>
    </message>
</context>
<context>
    <name>Velk::RedisRobotWriter</name>
    <message>
        <source>A memory in plain mode is only read: leave out the option &quot;plain&quot; to write.</source>
        <translation>Ein Speicher im Modus „plain“ wird nur gelesen: Lassen Sie zum Schreiben die Option „plain“ weg.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisSocket</name>
    <message>
        <source>Redis: connection lost</source>
        <translation>Redis: Verbindung verloren</translation>
    </message>
    <message>
        <source>Redis: cannot connect</source>
        <translation>Redis: Verbindung nicht möglich</translation>
    </message>
    <message>
        <source>Redis: protocol error</source>
        <translation>Redis: Protokollfehler</translation>
    </message>
    <message>
        <source>Out of memory while reading from %1.</source>
        <translation>Zu wenig Speicher beim Lesen von %1.</translation>
    </message>
    <message>
        <source>%1 does not speak the Redis protocol (%2). Check the address and the port.</source>
        <translation>%1 spricht nicht das Redis-Protokoll (%2). Prüfen Sie Adresse und Port.</translation>
    </message>
    <message>
        <source>%1 sent a reply that nobody asked for (%2). Check the address and the port.</source>
        <translation>%1 hat eine Antwort gesendet, die niemand verlangt hat (%2). Prüfen Sie Adresse und Port.</translation>
    </message>
    <message>
        <source>%1 does not speak the Redis protocol (%2). Check the address and the port, and whether the server expects TLS.</source>
        <translation>%1 spricht nicht das Redis-Protokoll (%2). Prüfen Sie Adresse und Port und ob der Server TLS erwartet.</translation>
    </message>
    <message>
        <source>%1 could not be trusted: %2. Check the server&apos;s certificate, and the ca-file and tls-name of the URL.</source>
        <translation>%1 ist nicht vertrauenswürdig: %2. Prüfen Sie das Zertifikat des Servers sowie ca-file und tls-name der URL.</translation>
    </message>
    <message>
        <source>%1 refuses the connection. Check that the server is running and that host and port are right.</source>
        <translation>%1 lehnt die Verbindung ab. Prüfen Sie, ob der Server läuft und ob Rechner und Port stimmen.</translation>
    </message>
    <message>
        <source>There is no host of the name %1. Check the host&apos;s name.</source>
        <translation>Es gibt keinen Rechner namens %1. Prüfen Sie den Namen.</translation>
    </message>
    <message>
        <source>%1 has closed the connection.</source>
        <translation>%1 hat die Verbindung geschlossen.</translation>
    </message>
    <message>
        <source>%1 has closed the connection before it was established. Check whether the server expects TLS, or a client certificate.</source>
        <translation>%1 hat die Verbindung geschlossen, bevor sie stand. Prüfen Sie, ob der Server TLS oder ein Client-Zertifikat erwartet.</translation>
    </message>
    <message>
        <source>No TLS connection to %1 (%2). Check that the server&apos;s port speaks TLS.</source>
        <translation>Keine TLS-Verbindung zu %1 (%2). Prüfen Sie, ob der Port des Servers TLS spricht.</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <translation>%1: %2.</translation>
    </message>
    <message>
        <source>%1 has closed the connection before it answered. Check that it is a Redis server, and whether it expects TLS, or a client certificate.</source>
        <translation>%1 hat die Verbindung geschlossen, bevor eine Antwort kam. Prüfen Sie, ob es ein Redis-Server ist und ob er TLS oder ein Client-Zertifikat erwartet.</translation>
    </message>
    <message>
        <source>No TLS connection to %1 (%2). Check that the server&apos;s port speaks TLS, and whether the server expects a client certificate.</source>
        <translation>Keine TLS-Verbindung zu %1 (%2). Prüfen Sie, ob der Port des Servers TLS spricht und ob der Server ein Client-Zertifikat erwartet.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisUrl</name>
    <message>
        <source>The service&apos;s name is not percent-encoded UTF-8 text: write % as %25.</source>
        <translation>Der Name des Dienstes ist kein prozentkodierter UTF-8-Text: Schreiben Sie % als %25.</translation>
    </message>
    <message>
        <source>The URL does not say which service the sentinels are to be asked for: write %1://host/service/robot.</source>
        <translation>Die URL sagt nicht, nach welchem Dienst die Sentinels gefragt werden sollen: Schreiben Sie %1://host/service/robot.</translation>
    </message>
    <message>
        <source>The path %1 has too many parts: a robot has one name, with / written as %2F.</source>
        <translation>Der Pfad %1 hat zu viele Teile: Ein Roboter hat einen Namen, mit / als %2F geschrieben.</translation>
    </message>
    <message>
        <source>The robot&apos;s name is not percent-encoded UTF-8 text: write % as %25.</source>
        <translation>Der Name des Roboters ist kein prozentkodierter UTF-8-Text: Schreiben Sie % als %25.</translation>
    </message>
    <message>
        <source>The robot&apos;s name %1 holds a brace, which no robot&apos;s name can.</source>
        <translation>Der Name %1 des Roboters enthält eine geschweifte Klammer, die kein solcher Name enthalten darf.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is about TLS: write redis%2 instead of redis%3 at the start.</source>
        <translation>Die Option „%1“ betrifft TLS: Schreiben Sie am Anfang redis%2 statt redis%3.</translation>
    </message>
    <message>
        <source>The database %1 is not a number from 0 to %2.</source>
        <translation>Die Datenbank %1 ist keine Zahl von 0 bis %2.</translation>
    </message>
    <message>
        <source>The pong-timeout %1 is not a number of milliseconds from 10 to 3600000.</source>
        <translation>Der Wert %1 von pong-timeout ist keine Anzahl von Millisekunden von 10 bis 3600000.</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not the name of an environment variable.</source>
        <translation>Der Wert von „%1“ ist nicht der Name einer Umgebungsvariablen.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is about sentinels: it goes with redis+sentinel:// only.</source>
        <translation>Die Option „%1“ betrifft Sentinels: Sie gehört nur zu redis+sentinel://.</translation>
    </message>
    <message>
        <source>a Redis memory</source>
        <translation>eines Redis-Speichers</translation>
    </message>
</context>
<context>
    <name>Velk::RedisWriteQueue</name>
    <message>
        <source>The key %1 on the server holds a %2, which no data key is. Check which program writes it.</source>
        <translation>Der Schlüssel %1 auf dem Server enthält %2, was kein Datum ist. Prüfen Sie, welches Programm ihn schreibt.</translation>
    </message>
    <message>
        <source>The server does not keep up with what is written.</source>
        <translation>Der Server kommt mit dem Schreiben nicht nach.</translation>
    </message>
    <message>
        <source>Redis: key cannot be written</source>
        <translation>Redis: Schlüssel kann nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>Velk::RobotBar</name>
    <message>
        <source>Robot</source>
        <translation>Roboter</translation>
    </message>
    <message>
        <source>URL of the robot</source>
        <translation>URL des Roboters</translation>
    </message>
    <message>
        <source>URL of the robot, for example sim:</source>
        <translation>URL des Roboters, z. B. sim:</translation>
    </message>
    <message>
        <source>The robots that can be opened:</source>
        <translation>Die Roboter, die geöffnet werden können:</translation>
    </message>
    <message>
        <source>&amp;Robot:</source>
        <translation>&amp;Roboter:</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>Dis&amp;connect</source>
        <translation>&amp;Trennen</translation>
    </message>
</context>
<context>
    <name>Velk::RobotLinks</name>
    <message>
        <source>No robot is named. Possible are: %1.</source>
        <translation>Es ist kein Roboter genannt. Möglich sind: %1.</translation>
    </message>
    <message>
        <source>“%1” is not the URL of a robot: it does not begin with a scheme. Possible are: %2.</source>
        <translation>„%1“ ist nicht die URL eines Roboters: Sie beginnt nicht mit einem Schema. Möglich sind: %2.</translation>
    </message>
    <message>
        <source>There is no robot of the scheme “%1”. Possible are: %2.</source>
        <translation>Es gibt keinen Roboter mit dem Schema „%1“. Möglich sind: %2.</translation>
    </message>
    <message>
        <source>A robot of the scheme “%1” cannot be written to. Possible are: %2.</source>
        <translation>In einen Roboter mit dem Schema „%1“ kann nicht geschrieben werden. Möglich sind: %2.</translation>
    </message>
    <message>
        <source>This program has no connection to a robot that can be written to.</source>
        <translation>Dieses Programm hat keine Verbindung zu einem Roboter, in den geschrieben werden kann.</translation>
    </message>
    <message>
        <source>The connection %1 cannot be loaded: %2</source>
        <translation>Die Verbindung %1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>It is no connection of a robot.</source>
        <translation>Es ist keine Verbindung zu einem Roboter.</translation>
    </message>
    <message>
        <source>It was built for another version of this program (%1 and not %2). Build it again.</source>
        <translation>Es wurde für eine andere Version dieses Programms gebaut (%1 und nicht %2). Bauen Sie es neu.</translation>
    </message>
</context>
<context>
    <name>Velk::SimulatedFactory</name>
    <message>
        <source>a simulated mobile robot with an arm</source>
        <translation>ein simulierter fahrbarer Roboter mit Arm</translation>
    </message>
</context>
<context>
    <name>Velk::SimulatedFeed</name>
    <message>
        <source>“%1” is not the URL of a simulated robot. It is written sim:[?seed=N][&amp;keys=N].</source>
        <translation>„%1“ ist nicht die URL eines simulierten Roboters. Sie lautet sim:[?seed=N][&amp;keys=N].</translation>
    </message>
    <message>
        <source>“%1” says more than a simulated robot has. Its URL is written sim:[?seed=N][&amp;keys=N].</source>
        <translation>„%1“ sagt mehr, als ein simulierter Roboter hat. Seine URL lautet sim:[?seed=N][&amp;keys=N].</translation>
    </message>
    <message>
        <source>The parameter “%1” is given twice. Give it once.</source>
        <translation>Der Parameter „%1“ ist zweimal angegeben. Geben Sie ihn einmal an.</translation>
    </message>
    <message>
        <source>The seed “%1” is not a number. Give a whole number, 0 or more, such as sim:?seed=7.</source>
        <translation>Der Startwert „%1“ ist keine Zahl. Geben Sie eine ganze Zahl ab 0 an, etwa sim:?seed=7.</translation>
    </message>
    <message>
        <source>The number of extra keys “%1” is not possible. Give a whole number from 0 to %2, such as sim:?keys=5000.</source>
        <translation>Die Anzahl „%1“ weiterer Schlüssel ist nicht möglich. Geben Sie eine ganze Zahl von 0 bis %2 an, etwa sim:?keys=5000.</translation>
    </message>
    <message>
        <source>A simulated robot has no parameter “%1”. It has: seed, keys.</source>
        <translation>Ein simulierter Roboter hat keinen Parameter „%1“. Er hat: seed, keys.</translation>
    </message>
</context>
<context>
    <name>Velk::TlsOptions</name>
    <message>
        <source>The file %1 cannot be read: %2.</source>
        <translation>Die Datei %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>This installation of Qt has no TLS: install OpenSSL.</source>
        <translation>Diese Qt-Installation hat kein TLS: Installieren Sie OpenSSL.</translation>
    </message>
    <message>
        <source>The ca-file %1 holds no certificate in PEM form.</source>
        <translation>Die Datei %1 (ca-file) enthält kein Zertifikat im PEM-Format.</translation>
    </message>
    <message>
        <source>The cert-file %1 holds no certificate in PEM form.</source>
        <translation>Die Datei %1 (cert-file) enthält kein Zertifikat im PEM-Format.</translation>
    </message>
    <message>
        <source>%1 holds no private key in PEM form that is not encrypted.</source>
        <translation>%1 enthält keinen unverschlüsselten privaten Schlüssel im PEM-Format.</translation>
    </message>
    <message>
        <source>There is a key-file without the certificate that it belongs to: add cert-file=PATH.</source>
        <translation>Es gibt ein key-file ohne das Zertifikat, zu dem es gehört: Ergänzen Sie cert-file=PATH.</translation>
    </message>
</context>
<context>
    <name>Velk::WatchBar</name>
    <message>
        <source>&amp;Sample</source>
        <translation>&amp;Abtasten</translation>
    </message>
    <message>
        <source>Sample the watched keys, or pause the sampling (F5)</source>
        <translation>Die beobachteten Schlüssel abtasten oder die Abtastung anhalten (F5)</translation>
    </message>
    <message>
        <source>Free&amp;ze table</source>
        <translation>Tabelle an&amp;halten</translation>
    </message>
    <message>
        <source>Keep the values of the table as they are; sampling and recording go on (F6)</source>
        <translation>Die Werte der Tabelle lassen, wie sie sind; Abtastung und Aufzeichnung gehen weiter (F6)</translation>
    </message>
    <message>
        <source>Reco&amp;rd</source>
        <translation>Aufzei&amp;chnen</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>Record every value of the watched keys, or stop recording (Ctrl+R)</source>
        <translation>Jeden Wert der beobachteten Schlüssel aufzeichnen oder die Aufzeichnung beenden (Strg+R)</translation>
    </message>
    <message>
        <source>Sa&amp;ve recording…</source>
        <translation>Aufzeichnung &amp;speichern …</translation>
    </message>
    <message>
        <source>Save the recording to a file (Ctrl+S)</source>
        <translation>Die Aufzeichnung in einer Datei speichern (Strg+S)</translation>
    </message>
    <message>
        <source>&amp;Discard recording</source>
        <translation>Aufzeichnung &amp;verwerfen</translation>
    </message>
    <message>
        <source>Watching</source>
        <translation>Beobachtung</translation>
    </message>
    <message>
        <source>Sampling period in milliseconds</source>
        <translation>Abtastperiode in Millisekunden</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source>&amp;Period:</source>
        <translation>&amp;Periode:</translation>
    </message>
</context>
<context>
    <name>Velk::WatchOptions</name>
    <message>
        <source>velk-watch --help lists the options.</source>
        <translation>velk-watch --help nennt die Optionen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no option. Name the keys to watch after --watch.</source>
        <translation>„%1“ ist keine Option. Nennen Sie die Schlüssel, die beobachtet werden sollen, nach --watch.</translation>
    </message>
    <message>
        <source>Usage: velk-watch [--robot URL] [--watch KEY...] [--settings FILE]
Shows the memory of a robot: its keys, their values as they change, and recordings of them.

  -r, --robot URL      the robot to open; otherwise the one in VELK_ROBOT, if set
  -w, --watch KEY...   the keys to watch, in place of those of the last time
      --settings FILE  remembers the window and the keys in FILE and not in the user&apos;s own settings
  -h, --help           this text
  -v, --version        the version

Robots:
%1

Exit status:
   0  the window was closed
   2  the command line is not understood
   3  the URL of the robot is not valid
  11  there is no display for the window
</source>
        <translation>Aufruf: velk-watch [--robot URL] [--watch SCHLÜSSEL...] [--settings DATEI]
Zeigt den Speicher eines Roboters: seine Schlüssel, ihre Werte, wie sie sich ändern, und Aufzeichnungen davon.

  -r, --robot URL            der Roboter, der geöffnet wird; sonst der in VELK_ROBOT, falls gesetzt
  -w, --watch SCHLÜSSEL...   die Schlüssel, die beobachtet werden, statt derer vom letzten Mal
      --settings DATEI       merkt sich Fenster und Schlüssel in DATEI statt in den eigenen Einstellungen
  -h, --help                 dieser Text
  -v, --version              die Version

Roboter:
%1

Rückgabewert:
   0  das Fenster wurde geschlossen
   2  die Befehlszeile ist nicht verständlich
   3  die URL des Roboters ist nicht gültig
  11  es gibt keine Anzeige für das Fenster
</translation>
    </message>
    <message>
        <source>velk-watch: there is no display to show a window on (DISPLAY and WAYLAND_DISPLAY are not set).
The command line shows the same values:
  %1
</source>
        <translation>velk-watch: Es gibt keine Anzeige für ein Fenster (DISPLAY und WAYLAND_DISPLAY sind nicht gesetzt).
Die Befehlszeile zeigt dieselben Werte:
  %1
</translation>
    </message>
</context>
<context>
    <name>Velk::WatchPanel</name>
    <message>
        <source>Watched keys</source>
        <translation>Beobachtete Schlüssel</translation>
    </message>
    <message>
        <source>Color of %1</source>
        <translation>Farbe von %1</translation>
    </message>
    <message>
        <source>No key is watched. Choose one on the left with Enter or a double click, or drag it here.</source>
        <translation>Es wird kein Schlüssel beobachtet. Wählen Sie links einen mit der Eingabetaste oder einem Doppelklick, oder ziehen Sie ihn hierher.</translation>
    </message>
</context>
<context>
    <name>Velk::WatchStatusBar</name>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Sampling period</source>
        <translation>Abtastperiode</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>Gespeichert in %1</translation>
    </message>
</context>
<context>
    <name>Velk::WindowMenus</name>
    <message>
        <source>&amp;Unwatch selected keys</source>
        <translation>Ausgewählte Schlüssel &amp;nicht mehr beobachten</translation>
    </message>
    <message>
        <source>&amp;Robot</source>
        <translation>&amp;Roboter</translation>
    </message>
    <message>
        <source>&amp;URL of the robot</source>
        <translation>&amp;URL des Roboters</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>&amp;Disconnect</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Schlüssel</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Color of the key…</source>
        <translation>&amp;Farbe des Schlüssels …</translation>
    </message>
    <message>
        <source>&amp;Plot</source>
        <translation>&amp;Diagramm</translation>
    </message>
    <message>
        <source>&amp;Follow the newest values</source>
        <translation>Den neuesten Werten &amp;folgen</translation>
    </message>
    <message>
        <source>Show a &amp;shorter time</source>
        <translation>&amp;Kürzere Zeit zeigen</translation>
    </message>
    <message>
        <source>Show a &amp;longer time</source>
        <translation>&amp;Längere Zeit zeigen</translation>
    </message>
    <message>
        <source>Zoom &amp;in on the values</source>
        <translation>Werte &amp;vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;out of the values</source>
        <translation>Werte ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Fi&amp;t everything</source>
        <translation>Alles &amp;einpassen</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>Re&amp;cording</source>
        <translation>Auf&amp;zeichnung</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Colors</source>
        <translation>&amp;Farben</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
</context>
</TS>
