<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>Velk::CatalogueFilterModel</name>
    <message>
        <source>&quot;%1&quot; is not a regular expression yet: %2</source>
        <translation>« %1 » n’est pas encore une expression rationnelle : %2</translation>
    </message>
</context>
<context>
    <name>Velk::CatalogueModel</name>
    <message>
        <source>Key of nature %1, selected</source>
        <translation>Clé de nature %1, sélectionnée</translation>
    </message>
    <message>
        <source>Key of nature %1</source>
        <translation>Clé de nature %1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>The key&apos;s name in the robot&apos;s memory</source>
        <translation>Le nom de la clé dans la mémoire du robot</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>What is known about the key</source>
        <translation>Ce que l’on sait de la clé</translation>
    </message>
    <message>
        <source>Nature</source>
        <translation>Nature</translation>
    </message>
    <message>
        <source>Whether the robot lists the key as data, as an event, or not at all</source>
        <translation>Si le robot déclare la clé comme donnée, comme événement ou pas du tout</translation>
    </message>
</context>
<context>
    <name>Velk::CatalogueTreeModel</name>
    <message>
        <source>1 key</source>
        <translation>1 clé</translation>
    </message>
    <message>
        <source>%1 keys</source>
        <translation>%1 clés</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(sans nom)</translation>
    </message>
    <message>
        <source>Branch, %1</source>
        <translation>Branche, %1</translation>
    </message>
</context>
<context>
    <name>Velk::DistinctColors</name>
    <message>
        <source>blue</source>
        <translation>bleu</translation>
    </message>
    <message>
        <source>vermilion</source>
        <translation>vermillon</translation>
    </message>
    <message>
        <source>bluish green</source>
        <translation>vert bleuté</translation>
    </message>
    <message>
        <source>reddish purple</source>
        <translation>pourpre</translation>
    </message>
    <message>
        <source>orange</source>
        <translation>orange</translation>
    </message>
    <message>
        <source>sky blue</source>
        <translation>bleu ciel</translation>
    </message>
    <message>
        <source>violet</source>
        <translation>violet</translation>
    </message>
    <message>
        <source>brown</source>
        <translation>brun</translation>
    </message>
    <message>
        <source>light green</source>
        <translation>vert clair</translation>
    </message>
    <message>
        <source>dark grey</source>
        <translation>gris foncé</translation>
    </message>
    <message>
        <source>lavender</source>
        <translation>lavande</translation>
    </message>
    <message>
        <source>crimson</source>
        <translation>cramoisi</translation>
    </message>
    <message>
        <source>pink</source>
        <translation>rose</translation>
    </message>
    <message>
        <source>indigo</source>
        <translation>indigo</translation>
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
        <translation>%1 (%2 en tout)</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucune</translation>
    </message>
    <message>
        <source>true</source>
        <translation>vrai</translation>
    </message>
    <message>
        <source>false</source>
        <translation>faux</translation>
    </message>
    <message>
        <source>%1 (%2 bytes)</source>
        <translation>%1 (%2 octets)</translation>
    </message>
    <message>
        <source>%1 and more</source>
        <translation>%1 et plus</translation>
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
        <translation>montrée</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>cachée</translation>
    </message>
    <message>
        <source>no value yet</source>
        <translation>pas encore de valeur</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Montrée</translation>
    </message>
    <message>
        <source>Whether the key is drawn</source>
        <translation>Si la clé est tracée</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Couleur</translation>
    </message>
    <message>
        <source>The color in which the key is drawn</source>
        <translation>La couleur dans laquelle la clé est tracée</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>The key&apos;s name in the robot&apos;s memory</source>
        <translation>Le nom de la clé dans la mémoire du robot</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>What is known about the key</source>
        <translation>Ce que l’on sait de la clé</translation>
    </message>
    <message>
        <source>Nature</source>
        <translation>Nature</translation>
    </message>
    <message>
        <source>Whether the robot lists the key as data, as an event, or not at all</source>
        <translation>Si le robot déclare la clé comme donnée, comme événement ou pas du tout</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>The newest value that was received</source>
        <translation>La dernière valeur reçue</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Temps</translation>
    </message>
    <message>
        <source>When the robot took the value, by its own clock</source>
        <translation>Quand le robot a pris la valeur, selon sa propre horloge</translation>
    </message>
    <message>
        <source>Age</source>
        <translation>Âge</translation>
    </message>
    <message>
        <source>How long ago the value was received</source>
        <translation>Depuis combien de temps la valeur a été reçue</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Période</translation>
    </message>
    <message>
        <source>The time between two samples when the key is sampled at its own period</source>
        <translation>Le temps entre deux échantillons quand la clé est échantillonnée à sa propre période</translation>
    </message>
</context>
</TS>
