<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>RecordFileSaver</name>
    <message>
        <source>its last line is cut off</source>
        <translation>sa dernière ligne est tronquée</translation>
    </message>
    <message>
        <source>Recording not saved</source>
        <translation>Enregistrement non sauvegardé</translation>
    </message>
    <message>
        <source>No file name was given.
Name the file to save to.</source>
        <translation>Aucun nom de fichier n’a été donné.
Indiquez le fichier de destination.</translation>
    </message>
    <message>
        <source>%1 is a directory.
Add the name of a file to it.</source>
        <translation>%1 est un répertoire.
Ajoutez-y un nom de fichier.</translation>
    </message>
    <message>
        <source>%1 is a symbolic link to a file that does not exist.
Remove the link, or choose another file.</source>
        <translation>%1 est un lien symbolique vers un fichier inexistant.
Supprimez le lien ou choisissez un autre fichier.</translation>
    </message>
    <message>
        <source>%1 is not a regular file and cannot be replaced.
Choose another file.</source>
        <translation>%1 n’est pas un fichier ordinaire et ne peut pas être remplacé.
Choisissez un autre fichier.</translation>
    </message>
    <message>
        <source>The directory %1 does not exist.
Create it, or choose another.</source>
        <translation>Le répertoire %1 n’existe pas.
Créez-le ou choisissez-en un autre.</translation>
    </message>
    <message>
        <source>You may not create files in %1.
Choose another directory, or change its permissions.</source>
        <translation>Vous n’avez pas le droit de créer des fichiers dans %1.
Choisissez un autre répertoire ou modifiez ses droits.</translation>
    </message>
    <message>
        <source>There is no recording.
Start and stop one first.</source>
        <translation>Il n’y a pas d’enregistrement.
Commencez-en un et arrêtez-le d’abord.</translation>
    </message>
    <message>
        <source>The record file holds no complete line.
Make room on the disk of %1 and record again.</source>
        <translation>Le fichier d’enregistrement ne contient aucune ligne complète.
Faites de la place sur le disque de %1 et recommencez.</translation>
    </message>
    <message>
        <source>%1 exists already.
Choose another file, or replace it.</source>
        <translation>%1 existe déjà.
Choisissez un autre fichier ou remplacez celui-ci.</translation>
    </message>
    <message>
        <source>The recording is kept in %1.</source>
        <translation>L’enregistrement est conservé dans %1.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2.
Make room on the disk, or choose another file.</source>
        <translation>%1 n’a pas pu être écrit : %2.
Faites de la place sur le disque ou choisissez un autre fichier.</translation>
    </message>
    <message>
        <source>Recording incomplete</source>
        <translation>Enregistrement incomplet</translation>
    </message>
    <message>
        <source>The record file could not be written to its end (%1). Complete rows saved in %2: %3; what came after them is lost.
Make room on the disk of %4 before you record again.</source>
        <translation>Le fichier d’enregistrement n’a pas pu être écrit jusqu’au bout (%1). Lignes complètes sauvegardées dans %2 : %3 ; la suite est perdue.
Faites de la place sur le disque de %4 avant d’enregistrer à nouveau.</translation>
    </message>
</context>
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
        <source>%1
%2
%3</source>
        <translation>%1
%2
%3</translation>
    </message>
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
    <name>Velk::CataloguePanel</name>
    <message>
        <source>Search keys, for example Arm/*/Position</source>
        <translation>Chercher des clés, p. ex. Arm/*/Position</translation>
    </message>
    <message>
        <source>Search keys</source>
        <translation>Chercher des clés</translation>
    </message>
    <message>
        <source>Type a part of a name; * stands for any text. Enter watches the only key that is left.</source>
        <translation>Tapez une partie d’un nom ; * remplace n’importe quel texte. Entrée observe la seule clé qui reste.</translation>
    </message>
    <message>
        <source>The text is a regular expression</source>
        <translation>Le texte est une expression rationnelle</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Expression rationnelle</translation>
    </message>
    <message>
        <source>Tree</source>
        <translation>Arbre</translation>
    </message>
    <message>
        <source>Show the keys as a tree by name, or as a table</source>
        <translation>Montrer les clés en arbre selon leur nom, ou en tableau</translation>
    </message>
    <message>
        <source>Number of keys that are shown</source>
        <translation>Nombre de clés montrées</translation>
    </message>
    <message>
        <source>Name of any other key</source>
        <translation>Nom d’une autre clé</translation>
    </message>
    <message>
        <source>Name of a key to watch</source>
        <translation>Nom d’une clé à observer</translation>
    </message>
    <message>
        <source>A key that the robot does not list is watched all the same, and has values once it exists.</source>
        <translation>Une clé que le robot ne déclare pas est observée quand même, et a des valeurs dès qu’elle existe.</translation>
    </message>
    <message>
        <source>&amp;Watch</source>
        <translation>&amp;Observer</translation>
    </message>
    <message>
        <source>Watch the key of this name</source>
        <translation>Observer la clé de ce nom</translation>
    </message>
    <message>
        <source>Keys of the robot</source>
        <translation>Clés du robot</translation>
    </message>
    <message>
        <source>Show the keys of nature %1</source>
        <translation>Montrer les clés de nature %1</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>Recherche…</translation>
    </message>
    <message>
        <source>%L1 of %L2 keys</source>
        <translation>%L1 clés sur %L2</translation>
    </message>
</context>
<context>
    <name>Velk::CatalogueTreeModel</name>
    <message>
        <source>(no name)</source>
        <translation>(sans nom)</translation>
    </message>
    <message numerus="yes">
        <source>%n key(s)</source>
        <translation>
            <numerusform>%n clé</numerusform>
            <numerusform>%n clés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1
%n key(s)</source>
        <translation>
            <numerusform>%1
%n clé</numerusform>
            <numerusform>%1
%n clés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Branch with %n key(s)</source>
        <translation>
            <numerusform>Branche de %n clé</numerusform>
            <numerusform>Branche de %n clés</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::ColorTheme</name>
    <message>
        <source>As the desktop</source>
        <translation>Comme le bureau</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>High contrast</source>
        <translation>Contraste élevé</translation>
    </message>
</context>
<context>
    <name>Velk::ConnectionStatus</name>
    <message>
        <source>Disconnected</source>
        <translation>Déconnecté</translation>
    </message>
    <message>
        <source>Disconnected for %1</source>
        <translation>Déconnecté depuis %1</translation>
    </message>
    <message>
        <source>Connecting for %1</source>
        <translation>Connexion en cours depuis %1</translation>
    </message>
    <message>
        <source>Connected for %1</source>
        <translation>Connecté depuis %1</translation>
    </message>
    <message>
        <source>Connection lost for %1, trying again</source>
        <translation>Connexion perdue depuis %1, nouvel essai en cours</translation>
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
        <translation>%1 j %2 h</translation>
    </message>
</context>
<context>
    <name>Velk::DisplayedMemoryKeyListModel</name>
    <message>
        <source>Not connected to a robot</source>
        <translation>Aucun robot connecté</translation>
    </message>
    <message>
        <source>Cannot retrieve memory value if no robot is connected.</source>
        <translation>Impossible de lire des valeurs de la mémoire sans robot connecté.</translation>
    </message>
    <message>
        <source>Missing memory interface</source>
        <translation>Service de mémoire absent</translation>
    </message>
    <message>
        <source>Cannot retrieve memory values as no memory interface was found.</source>
        <translation>Impossible de lire les valeurs de la mémoire : aucun service de mémoire n’a été trouvé.</translation>
    </message>
    <message>
        <source>Could not open temporary file for writing.
Please check your permissions for accessing %1</source>
        <translation>Le fichier temporaire n’a pas pu être ouvert en écriture.
Vérifiez vos droits d’accès à %1</translation>
    </message>
    <message>
        <source>Could not write data.
Your disk may be full or inaccessible.
Please check your permissions.</source>
        <translation>Les données n’ont pas pu être écrites.
Le disque est peut-être plein ou inaccessible.
Vérifiez vos droits d’accès.</translation>
    </message>
    <message>
        <source>Memory recording</source>
        <translation>Enregistrement de la mémoire</translation>
    </message>
    <message>
        <source>Could not write data.
Your disk may be full or inaccessible.
Please move your recorded data to another disk.</source>
        <translation>Les données n’ont pas pu être écrites.
Le disque est peut-être plein ou inaccessible.
Déplacez les données enregistrées sur un autre disque.</translation>
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
    <name>Velk::EmbeddedLink</name>
    <message>
        <source>Connection lost</source>
        <translation>Connexion perdue</translation>
    </message>
    <message>
        <source>The robot is out of reach.
It is connected again when it is back.</source>
        <translation>Le robot est hors de portée.
Il sera reconnecté dès son retour.</translation>
    </message>
    <message>
        <source>Robot not in reach</source>
        <translation>Robot hors de portée</translation>
    </message>
    <message>
        <source>The robot is out of reach.
It is connected when it is back.</source>
        <translation>Le robot est hors de portée.
Il sera connecté dès son retour.</translation>
    </message>
</context>
<context>
    <name>Velk::HostLink</name>
    <message>
        <source>This computer has no parameter “%1”. Its URL is written host: without any.</source>
        <translation>Cet ordinateur n’a pas de paramètre « %1 ». Son URL s’écrit host: sans paramètre.</translation>
    </message>
    <message>
        <source>“%1” is not the URL of this computer. It is written host: and nothing more.</source>
        <translation>« %1 » n’est pas l’URL de cet ordinateur. Elle s’écrit host: et rien de plus.</translation>
    </message>
    <message>
        <source>No figures of this computer</source>
        <translation>Pas de mesures de cet ordinateur</translation>
    </message>
    <message>
        <source>Nothing can be read below /proc.
The figures are available on Linux, with /proc mounted.</source>
        <translation>Rien ne peut être lu sous /proc.
Les mesures sont disponibles sous Linux, avec /proc monté.</translation>
    </message>
</context>
<context>
    <name>Velk::MainWindow</name>
    <message>
        <source>Robot memory</source>
        <translation>Mémoire du robot</translation>
    </message>
    <message>
        <source>&amp;Sample</source>
        <translation>É&amp;chantillonner</translation>
    </message>
    <message>
        <source>Let the robot sample the watched keys, or pause it (F5)</source>
        <translation>Laisser le robot échantillonner les clés observées, ou le suspendre (F5)</translation>
    </message>
    <message>
        <source>Free&amp;ze table</source>
        <translation>&amp;Figer le tableau</translation>
    </message>
    <message>
        <source>Keep the values of the table as they are; sampling and recording go on (F6)</source>
        <translation>Garder les valeurs du tableau telles quelles ; l’échantillonnage et l’enregistrement continuent (F6)</translation>
    </message>
    <message>
        <source>Reco&amp;rd</source>
        <translation>En&amp;registrer</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>Record every value of the watched keys, or stop recording (Ctrl+R)</source>
        <translation>Enregistrer chaque valeur des clés observées, ou arrêter l’enregistrement (Ctrl+R)</translation>
    </message>
    <message>
        <source>Sa&amp;ve recording…</source>
        <translation>Sau&amp;vegarder l’enregistrement…</translation>
    </message>
    <message>
        <source>Save the recording to a file (Ctrl+S)</source>
        <translation>Sauvegarder l’enregistrement dans un fichier (Ctrl+S)</translation>
    </message>
    <message>
        <source>&amp;Discard recording</source>
        <translation>&amp;Abandonner l’enregistrement</translation>
    </message>
    <message>
        <source>Discard the recording?</source>
        <translation>Abandonner l’enregistrement ?</translation>
    </message>
    <message>
        <source>&amp;Unwatch selected keys</source>
        <translation>&amp;Ne plus observer les clés sélectionnées</translation>
    </message>
    <message>
        <source>Watching</source>
        <translation>Observation</translation>
    </message>
    <message>
        <source>Sampling period in milliseconds</source>
        <translation>Période d’échantillonnage en millisecondes</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source>&amp;Period:</source>
        <translation>&amp;Période :</translation>
    </message>
    <message>
        <source>Keys of the robot</source>
        <translation>Clés du robot</translation>
    </message>
    <message>
        <source>No robot</source>
        <translation>Pas de robot</translation>
    </message>
    <message>
        <source>Connect to a robot first.</source>
        <translation>Connectez d’abord un robot.</translation>
    </message>
    <message>
        <source>&amp;Robot</source>
        <translation>&amp;Robot</translation>
    </message>
    <message>
        <source>&amp;URL of the robot</source>
        <translation>&amp;URL du robot</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>&amp;Disconnect</source>
        <translation>&amp;Déconnecter</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Clés</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>C&amp;hercher</translation>
    </message>
    <message>
        <source>&amp;Color of the key…</source>
        <translation>&amp;Couleur de la clé…</translation>
    </message>
    <message>
        <source>&amp;Plot</source>
        <translation>&amp;Graphique</translation>
    </message>
    <message>
        <source>&amp;Follow the newest values</source>
        <translation>&amp;Suivre les valeurs les plus récentes</translation>
    </message>
    <message>
        <source>Show a &amp;shorter time</source>
        <translation>Montrer une durée plus &amp;courte</translation>
    </message>
    <message>
        <source>Show a &amp;longer time</source>
        <translation>Montrer une durée plus &amp;longue</translation>
    </message>
    <message>
        <source>Zoom &amp;in on the values</source>
        <translation>A&amp;grandir les valeurs</translation>
    </message>
    <message>
        <source>Zoom &amp;out of the values</source>
        <translation>&amp;Réduire les valeurs</translation>
    </message>
    <message>
        <source>Fi&amp;t everything</source>
        <translation>Tout a&amp;juster</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>Re&amp;cording</source>
        <translation>&amp;Enregistrement</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>&amp;Colors</source>
        <translation>&amp;Couleurs</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>À &amp;propos</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Sampling period</source>
        <translation>Période d’échantillonnage</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Enregistrement</translation>
    </message>
    <message>
        <source>This robot cannot be opened</source>
        <translation>Ce robot ne peut pas être ouvert</translation>
    </message>
    <message>
        <source>%1 – Robot memory</source>
        <translation>%1 – Mémoire du robot</translation>
    </message>
    <message>
        <source>, sampling</source>
        <translation>, échantillonnage en cours</translation>
    </message>
    <message>
        <source>, nothing to sample</source>
        <translation>, rien à échantillonner</translation>
    </message>
    <message>
        <source>, sampling paused</source>
        <translation>, échantillonnage suspendu</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>velk-watch %1

Shows the memory of a robot: its keys, their values as they change, and recordings of them.</source>
        <translation>velk-watch %1

Montre la mémoire d’un robot : ses clés, leurs valeurs au fil des changements, et leurs enregistrements.</translation>
    </message>
    <message>
        <source>The recording before is not saved.</source>
        <translation>L’enregistrement précédent n’est pas sauvegardé.</translation>
    </message>
    <message>
        <source>Save recording</source>
        <translation>Sauvegarder l’enregistrement</translation>
    </message>
    <message>
        <source>Recordings (*.csv);;All files (*)</source>
        <translation>Enregistrements (*.csv);;Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>Sauvegardé dans %1</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Sauvegarder…</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Abandonner</translation>
    </message>
    <message>
        <source>The settings could not be written to %1.</source>
        <translation>Les réglages n’ont pas pu être écrits dans %1.</translation>
    </message>
    <message>
        <source>A recording is running. It ends when the window is closed.</source>
        <translation>Un enregistrement est en cours. Il s’arrête quand la fenêtre est fermée.</translation>
    </message>
    <message>
        <source>The recording is not saved.</source>
        <translation>L’enregistrement n’est pas sauvegardé.</translation>
    </message>
</context>
<context>
    <name>Velk::MessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>&amp;Dismiss</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Dismiss this message (Escape)</source>
        <translation>Fermer ce message (Échap)</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n autre</numerusform>
            <numerusform>%n autres</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::PeriodControl</name>
    <message>
        <source>%1 ms asked, this robot gives %2 ms and more: %3 ms in force</source>
        <translation>%1 ms demandées, ce robot donne %2 ms et plus : %3 ms en vigueur</translation>
    </message>
    <message>
        <source>%1 ms asked, this robot gives %2 ms at most: %3 ms in force</source>
        <translation>%1 ms demandées, ce robot donne %2 ms au plus : %3 ms en vigueur</translation>
    </message>
    <message>
        <source>%1 ms in force, below the %2 ms that this robot gives</source>
        <translation>%1 ms en vigueur, moins que les %2 ms que donne ce robot</translation>
    </message>
    <message>
        <source>%1 ms in force, this robot gives %2 ms and more</source>
        <translation>%1 ms en vigueur, ce robot donne %2 ms et plus</translation>
    </message>
</context>
<context>
    <name>Velk::PlotCurve</name>
    <message>
        <source>event</source>
        <translation>événement</translation>
    </message>
</context>
<context>
    <name>Velk::PlotPanel</name>
    <message>
        <source>&amp;Follow</source>
        <translation>S&amp;uivre</translation>
    </message>
    <message>
        <source>Follow the newest values</source>
        <translation>Suivre les valeurs les plus récentes</translation>
    </message>
    <message>
        <source>Follow the newest values, or freeze (Space)</source>
        <translation>Suivre les valeurs les plus récentes, ou figer (Espace)</translation>
    </message>
    <message>
        <source>To the past</source>
        <translation>Vers le passé</translation>
    </message>
    <message>
        <source>To the past (Left)</source>
        <translation>Vers le passé (Gauche)</translation>
    </message>
    <message>
        <source>To now</source>
        <translation>Vers maintenant</translation>
    </message>
    <message>
        <source>To now (Right)</source>
        <translation>Vers maintenant (Droite)</translation>
    </message>
    <message>
        <source>Show a longer time</source>
        <translation>Montrer une durée plus longue</translation>
    </message>
    <message>
        <source>Show a longer time (-)</source>
        <translation>Montrer une durée plus longue (-)</translation>
    </message>
    <message>
        <source>Show a shorter time</source>
        <translation>Montrer une durée plus courte</translation>
    </message>
    <message>
        <source>Show a shorter time (+)</source>
        <translation>Montrer une durée plus courte (+)</translation>
    </message>
    <message>
        <source>Fi&amp;t</source>
        <translation>A&amp;juster</translation>
    </message>
    <message>
        <source>Show the newest values, all of them</source>
        <translation>Montrer les valeurs les plus récentes, toutes</translation>
    </message>
    <message>
        <source>Show the newest values, all of them (Home)</source>
        <translation>Montrer les valeurs les plus récentes, toutes (Début)</translation>
    </message>
</context>
<context>
    <name>Velk::PlotView</name>
    <message>
        <source>Plot of the watched keys</source>
        <translation>Graphique des clés observées</translation>
    </message>
    <message>
        <source>Seconds before now</source>
        <translation>Secondes avant maintenant</translation>
    </message>
    <message>
        <source>Seconds before now (frozen)</source>
        <translation>Secondes avant maintenant (figé)</translation>
    </message>
    <message>
        <source>Nothing to plot yet: watch a key, and show it.</source>
        <translation>Rien à tracer pour l’instant : observez une clé et montrez-la.</translation>
    </message>
    <message>
        <source>The keys that are shown have no value yet that can be plotted.</source>
        <translation>Les clés montrées n’ont pas encore de valeur que l’on puisse tracer.</translation>
    </message>
    <message>
        <source>%1 s before now</source>
        <translation>il y a %1 s</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Velk::RecordingControl</name>
    <message numerus="yes">
        <source>%L1 row(s)</source>
        <translation>
            <numerusform>%L1 ligne</numerusform>
            <numerusform>%L1 lignes</numerusform>
        </translation>
    </message>
    <message>
        <source>Not recording</source>
        <translation>Pas d’enregistrement</translation>
    </message>
    <message>
        <source>Recording for %1, %2</source>
        <translation>Enregistrement depuis %1, %2</translation>
    </message>
    <message>
        <source>Not saved: %1, %2</source>
        <translation>Non sauvegardé : %1, %2</translation>
    </message>
    <message numerus="yes">
        <source>%n row(s) were recorded.</source>
        <translation>
            <numerusform>%n ligne a été enregistrée.</numerusform>
            <numerusform>%n lignes ont été enregistrées.</numerusform>
        </translation>
    </message>
    <message>
        <source>Recording incomplete</source>
        <translation>Enregistrement incomplet</translation>
    </message>
    <message>
        <source>Not all values could be written to %1: %2
Save what there is, and make room on that disk.</source>
        <translation>Toutes les valeurs n’ont pas pu être écrites dans %1 : %2
Sauvegardez ce qu’il y a et faites de la place sur ce disque.</translation>
    </message>
    <message>
        <source>Recording ended</source>
        <translation>Enregistrement terminé</translation>
    </message>
    <message>
        <source>The recording ended because the connection or the disk gave out. %1 Save them now.</source>
        <translation>L’enregistrement s’est arrêté parce que la connexion ou le disque a fait défaut. %1 Sauvegardez maintenant.</translation>
    </message>
</context>
<context>
    <name>Velk::RobotBar</name>
    <message>
        <source>Robot</source>
        <translation>Robot</translation>
    </message>
    <message>
        <source>URL of the robot</source>
        <translation>URL du robot</translation>
    </message>
    <message>
        <source>URL of the robot, for example sim:</source>
        <translation>URL du robot, p. ex. sim:</translation>
    </message>
    <message>
        <source>The robots that can be opened:</source>
        <translation>Les robots qui peuvent être ouverts :</translation>
    </message>
    <message>
        <source>&amp;Robot:</source>
        <translation>&amp;Robot :</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Connecter</translation>
    </message>
    <message>
        <source>Dis&amp;connect</source>
        <translation>Dé&amp;connecter</translation>
    </message>
</context>
<context>
    <name>Velk::RobotDirectory</name>
    <message>
        <source>a simulated mobile robot with an arm</source>
        <translation>un robot mobile simulé, avec un bras</translation>
    </message>
    <message>
        <source>the computer that this program runs on</source>
        <translation>l’ordinateur sur lequel tourne ce programme</translation>
    </message>
    <message>
        <source>No robot is named. Possible are: %1.</source>
        <translation>Aucun robot n’est indiqué. Sont possibles : %1.</translation>
    </message>
    <message>
        <source>“%1” is not the URL of a robot: it does not begin with a scheme. Possible are: %2.</source>
        <translation>« %1 » n’est pas l’URL d’un robot : elle ne commence pas par un schéma. Sont possibles : %2.</translation>
    </message>
    <message>
        <source>There is no robot of the scheme “%1”. Possible are: %2.</source>
        <translation>Il n’y a pas de robot du schéma « %1 ». Sont possibles : %2.</translation>
    </message>
</context>
<context>
    <name>Velk::SimulatedLink</name>
    <message>
        <source>“%1” is not the URL of a simulated robot. It is written sim:[?seed=N][&amp;keys=N].</source>
        <translation>« %1 » n’est pas l’URL d’un robot simulé. Elle s’écrit sim:[?seed=N][&amp;keys=N].</translation>
    </message>
    <message>
        <source>“%1” says more than a simulated robot has. Its URL is written sim:[?seed=N][&amp;keys=N].</source>
        <translation>« %1 » en dit plus que n’a un robot simulé. Son URL s’écrit sim:[?seed=N][&amp;keys=N].</translation>
    </message>
    <message>
        <source>The parameter “%1” is given twice. Give it once.</source>
        <translation>Le paramètre « %1 » est donné deux fois. Donnez-le une seule fois.</translation>
    </message>
    <message>
        <source>The seed “%1” is not a number. Give a whole number, 0 or more, such as sim:?seed=7.</source>
        <translation>La graine « %1 » n’est pas un nombre. Donnez un nombre entier, 0 ou plus, par exemple sim:?seed=7.</translation>
    </message>
    <message>
        <source>The number of extra keys “%1” is not possible. Give a whole number from 0 to %2, such as sim:?keys=5000.</source>
        <translation>Le nombre « %1 » de clés supplémentaires n’est pas possible. Donnez un nombre entier de 0 à %2, par exemple sim:?keys=5000.</translation>
    </message>
    <message>
        <source>A simulated robot has no parameter “%1”. It has: seed, keys.</source>
        <translation>Un robot simulé n’a pas de paramètre « %1 ». Il a : seed, keys.</translation>
    </message>
</context>
<context>
    <name>Velk::ValueText</name>
    <message>
        <source>NaN</source>
        <translation>NaN</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n element(s))</source>
        <translation>
            <numerusform>%1 (%n élément)</numerusform>
            <numerusform>%1 (%n éléments)</numerusform>
        </translation>
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
    <message numerus="yes">
        <source>%1 (%n byte(s))</source>
        <translation>
            <numerusform>%1 (%n octet)</numerusform>
            <numerusform>%1 (%n octets)</numerusform>
        </translation>
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
        <source>%1
%2
%3</source>
        <translation>%1
%2
%3</translation>
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
<context>
    <name>Velk::WatchOptions</name>
    <message>
        <source>velk-watch --help tells the options.</source>
        <translation>velk-watch --help donne les options.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no option. Name the keys to watch after --watch.</source>
        <translation>« %1 » n’est pas une option. Indiquez les clés à observer après --watch.</translation>
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
  10  there is no display for the window
</source>
        <translation>Usage : velk-watch [--robot URL] [--watch CLÉ...] [--settings FICHIER]
Montre la mémoire d’un robot : ses clés, leurs valeurs au fil des changements, et leurs enregistrements.

  -r, --robot URL         le robot à ouvrir ; sinon celui de VELK_ROBOT, si elle est définie
  -w, --watch CLÉ...      les clés à observer, à la place de celles de la dernière fois
      --settings FICHIER  retient la fenêtre et les clés dans FICHIER et non dans les réglages personnels
  -h, --help              ce texte
  -v, --version           la version

Robots :
%1

Code de retour :
   0  la fenêtre a été fermée
   2  la ligne de commande n’est pas comprise
   3  l’URL du robot n’est pas valable
  10  il n’y a pas d’écran pour la fenêtre
</translation>
    </message>
    <message>
        <source>velk-watch: there is no display to show a window on (DISPLAY and WAYLAND_DISPLAY are not set).
The command line shows the same values:
  %1
</source>
        <translation>velk-watch : il n’y a pas d’écran pour montrer une fenêtre (DISPLAY et WAYLAND_DISPLAY ne sont pas définies).
La ligne de commande montre les mêmes valeurs :
  %1
</translation>
    </message>
</context>
<context>
    <name>Velk::WatchPanel</name>
    <message>
        <source>Watched keys</source>
        <translation>Clés observées</translation>
    </message>
    <message>
        <source>Color of %1</source>
        <translation>Couleur de %1</translation>
    </message>
    <message>
        <source>No key is watched. Choose one on the left with Enter or a double click, or drag it here.</source>
        <translation>Aucune clé n’est observée. Choisissez-en une à gauche avec Entrée ou un double clic, ou faites-la glisser ici.</translation>
    </message>
</context>
</TS>
