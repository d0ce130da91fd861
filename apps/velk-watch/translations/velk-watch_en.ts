<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Velk::MessageBar</name>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n more</numerusform>
            <numerusform>%n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::PlotReadings</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::RecordingControl</name>
    <message numerus="yes">
        <source>%L1 row(s)</source>
        <translation>
            <numerusform>%L1 row</numerusform>
            <numerusform>%L1 rows</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%L1 row(s) were recorded.</source>
        <translation>
            <numerusform>%L1 row was recorded.</numerusform>
            <numerusform>%L1 rows were recorded.</numerusform>
        </translation>
    </message>
</context>
</TS>
