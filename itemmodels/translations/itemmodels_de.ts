<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Velk::CatalogueFilterModel</name>
    <message>
        <source>&quot;%1&quot; is not a regular expression yet: %2</source>
        <translation>„%1“ ist noch kein regulärer Ausdruck: %2</translation>
    </message>
</context>
<context>
    <name>Velk::CatalogueModel</name>
    <message>
        <source>Key of nature %1, selected</source>
        <translation>Schlüssel der Art %1, ausgewählt</translation>
    </message>
    <message>
        <source>Key of nature %1</source>
        <translation>Schlüssel der Art %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>The key&apos;s name in the robot&apos;s memory</source>
        <translation>Der Name des Schlüssels im Speicher des Roboters</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>What is known about the key</source>
        <translation>Was über den Schlüssel bekannt ist</translation>
    </message>
    <message>
        <source>Nature</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Whether the robot lists the key as data, as an event, or not at all</source>
        <translation>Ob der Roboter den Schlüssel als Datum, als Ereignis oder gar nicht aufführt</translation>
    </message>
</context>
<context>
    <name>Velk::CatalogueTreeModel</name>
    <message>
        <source>1 key</source>
        <translation>1 Schlüssel</translation>
    </message>
    <message>
        <source>%1 keys</source>
        <translation>%1 Schlüssel</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>Branch, %1</source>
        <translation>Zweig, %1</translation>
    </message>
</context>
<context>
    <name>Velk::DistinctColors</name>
    <message>
        <source>blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>vermilion</source>
        <translation>Zinnober</translation>
    </message>
    <message>
        <source>bluish green</source>
        <translation>Blaugrün</translation>
    </message>
    <message>
        <source>reddish purple</source>
        <translation>Purpurrot</translation>
    </message>
    <message>
        <source>orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>sky blue</source>
        <translation>Himmelblau</translation>
    </message>
    <message>
        <source>violet</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>brown</source>
        <translation>Braun</translation>
    </message>
    <message>
        <source>light green</source>
        <translation>Hellgrün</translation>
    </message>
    <message>
        <source>dark grey</source>
        <translation>Dunkelgrau</translation>
    </message>
    <message>
        <source>lavender</source>
        <translation>Lavendel</translation>
    </message>
    <message>
        <source>crimson</source>
        <translation>Karmesin</translation>
    </message>
    <message>
        <source>pink</source>
        <translation>Rosa</translation>
    </message>
    <message>
        <source>indigo</source>
        <translation>Indigo</translation>
    </message>
</context>
<context>
    <name>Velk::ValueText</name>
    <message>
        <source>NaN</source>
        <translation>NaN</translation>
    </message>
    <message>
        <source>%1 (%2 in all)</source>
        <translation>%1 (insgesamt %2)</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>true</source>
        <translation>wahr</translation>
    </message>
    <message>
        <source>false</source>
        <translation>falsch</translation>
    </message>
    <message>
        <source>%1 (%2 bytes)</source>
        <translation>%1 (%2 Bytes)</translation>
    </message>
    <message>
        <source>%1 and more</source>
        <translation>%1 und mehr</translation>
    </message>
</context>
<context>
    <name>Velk::WatchModel</name>
    <message>
        <source>&lt; 1 s</source>
        <translation>&lt; 1 s</translation>
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
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>gezeigt</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>no value yet</source>
        <translation>noch kein Wert</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Gezeigt</translation>
    </message>
    <message>
        <source>Whether the key is drawn</source>
        <translation>Ob der Schlüssel gezeichnet wird</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>The color in which the key is drawn</source>
        <translation>Die Farbe, in der der Schlüssel gezeichnet wird</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>The key&apos;s name in the robot&apos;s memory</source>
        <translation>Der Name des Schlüssels im Speicher des Roboters</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>What is known about the key</source>
        <translation>Was über den Schlüssel bekannt ist</translation>
    </message>
    <message>
        <source>Nature</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Whether the robot lists the key as data, as an event, or not at all</source>
        <translation>Ob der Roboter den Schlüssel als Datum, als Ereignis oder gar nicht aufführt</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>The newest value that was received</source>
        <translation>Der neueste empfangene Wert</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>When the robot took the value, by its own clock</source>
        <translation>Wann der Roboter den Wert nahm, nach seiner eigenen Uhr</translation>
    </message>
    <message>
        <source>Age</source>
        <translation>Alter</translation>
    </message>
    <message>
        <source>How long ago the value was received</source>
        <translation>Wie lange der Empfang des Werts her ist</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Periode</translation>
    </message>
    <message>
        <source>The time between two samples when the key is sampled at its own period</source>
        <translation>Die Zeit zwischen zwei Abtastungen, wenn der Schlüssel mit seiner eigenen Periode abgetastet wird</translation>
    </message>
</context>
</TS>
