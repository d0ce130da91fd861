<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Velk::CatalogueTreeModel</name>
    <message numerus="yes">
        <source>%n key(s)</source>
        <translation>
            <numerusform>%n key</numerusform>
            <numerusform>%n keys</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1
%n key(s)</source>
        <translation>
            <numerusform>%1
%n key</numerusform>
            <numerusform>%1
%n keys</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Branch with %n key(s)</source>
        <translation>
            <numerusform>Branch with %n key</numerusform>
            <numerusform>Branch with %n keys</numerusform>
        </translation>
    </message>
</context>
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
    <name>Velk::PlotView</name>
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
        <source>%n row(s) were recorded.</source>
        <translation>
            <numerusform>%n row was recorded.</numerusform>
            <numerusform>%n rows were recorded.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::ValueText</name>
    <message numerus="yes">
        <source>%1 (%n element(s))</source>
        <translation>
            <numerusform>%1 (%n element)</numerusform>
            <numerusform>%1 (%n elements)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n byte(s))</source>
        <translation>
            <numerusform>%1 (%n byte)</numerusform>
            <numerusform>%1 (%n bytes)</numerusform>
        </translation>
    </message>
</context>
</TS>
