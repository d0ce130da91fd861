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
    <name>RecordReader</name>
    <message>
        <source>a quote is inside a field that does not begin with one</source>
        <translation>un guillemet se trouve dans un champ qui ne commence pas par un guillemet</translation>
    </message>
    <message>
        <source>a quoted text is followed by neither a semicolon nor the end of the line</source>
        <translation>un texte entre guillemets n’est suivi ni d’un point-virgule ni de la fin de la ligne</translation>
    </message>
    <message>
        <source>the file does not begin with &quot;Time&quot;, so it is not a record file</source>
        <translation>le fichier ne commence pas par &quot;Time&quot; : ce n’est pas un enregistrement</translation>
    </message>
    <message>
        <source>the name of a column is not quoted</source>
        <translation>le nom d’une colonne n’est pas entre guillemets</translation>
    </message>
    <message>
        <source>the name of a column is not UTF-8</source>
        <translation>le nom d’une colonne n’est pas en UTF-8</translation>
    </message>
    <message>
        <source>the time is not a number</source>
        <translation>le temps n’est pas un nombre</translation>
    </message>
    <message>
        <source>a text is not UTF-8</source>
        <translation>un texte n’est pas en UTF-8</translation>
    </message>
    <message>
        <source>a cell is neither a number nor &quot;true&quot;, &quot;false&quot; or quoted</source>
        <translation>une cellule n’est ni un nombre, ni &quot;true&quot;, ni &quot;false&quot;, ni un texte entre guillemets</translation>
    </message>
    <message>
        <source>the line is longer than 1 GiB</source>
        <translation>la ligne dépasse 1 Gio</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>le fichier ne peut pas être lu : %1</translation>
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
        <source>Type a part of a name; * matches any text, ? one character. Enter watches the only key that is left.</source>
        <translation>Tapez une partie d’un nom ; * remplace n’importe quel texte, ? un caractère. Entrée observe la seule clé qui reste.</translation>
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
    <name>Velk::HostFactory</name>
    <message>
        <source>the computer that this program runs on</source>
        <translation>l’ordinateur sur lequel tourne ce programme</translation>
    </message>
</context>
<context>
    <name>Velk::HostFeed</name>
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
        <source>Discard the recording?</source>
        <translation>Abandonner l’enregistrement ?</translation>
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
        <source>The previous recording is not saved.</source>
        <translation>L’enregistrement précédent n’est pas sauvegardé.</translation>
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
    <name>Velk::NetworkAddress</name>
    <message>
        <source>After the IPv6 address %1 only a port can follow: [::1]:%2.</source>
        <translation>Après l’adresse IPv6 %1 ne peut venir qu’un port : [::1]:%2.</translation>
    </message>
    <message>
        <source>The bracket that opens the IPv6 address %1 is not closed.</source>
        <translation>Le crochet qui ouvre l’adresse IPv6 %1 n’est pas fermé.</translation>
    </message>
    <message>
        <source>The text in brackets, %1, is no IPv6 address.</source>
        <translation>Le texte entre crochets, %1, n’est pas une adresse IPv6.</translation>
    </message>
    <message>
        <source>An address has more than one colon: write an IPv6 address in brackets, [::1].</source>
        <translation>Une adresse a plus d’un deux-points : écrivez une adresse IPv6 entre crochets, [::1].</translation>
    </message>
    <message>
        <source>The host %1 is neither a host name nor an IP address.</source>
        <translation>L’hôte %1 n’est ni un nom d’hôte ni une adresse IP.</translation>
    </message>
    <message>
        <source>The port after the colon is not a number from 1 to 65535.</source>
        <translation>Le port après le deux-points n’est pas un nombre de 1 à 65535.</translation>
    </message>
</context>
<context>
    <name>Velk::NetworkSecret</name>
    <message>
        <source>The password file %1 does not exist or is no regular file: correct the path in the URL.</source>
        <translation>Le fichier de mot de passe %1 n’existe pas ou n’est pas un fichier ordinaire : corrigez le chemin dans l’URL.</translation>
    </message>
    <message>
        <source>The password file %1 cannot be read (%2): check its permissions.</source>
        <translation>Le fichier de mot de passe %1 ne peut pas être lu (%2) : vérifiez ses droits.</translation>
    </message>
    <message>
        <source>The password file %1 is longer than %2 bytes: it must hold the password and nothing else.</source>
        <translation>Le fichier de mot de passe %1 dépasse %2 octets : il ne doit contenir que le mot de passe.</translation>
    </message>
    <message>
        <source>The password file %1 is empty: it must hold the password.</source>
        <translation>Le fichier de mot de passe %1 est vide : il doit contenir le mot de passe.</translation>
    </message>
    <message>
        <source>The environment variable %1, which is to hold the password, is not set.</source>
        <translation>La variable d’environnement %1, qui doit contenir le mot de passe, n’est pas définie.</translation>
    </message>
    <message>
        <source>The URL says in more than one way what the password is: keep one of the password before the &quot;@&quot;, the file and the environment variable.</source>
        <translation>L’URL donne le mot de passe de plusieurs façons : gardez une seule des trois, le mot de passe avant le « @ », le fichier ou la variable d’environnement.</translation>
    </message>
</context>
<context>
    <name>Velk::NetworkUrl</name>
    <message>
        <source>This is no URL of %1: write %2.</source>
        <translation>Ce n’est pas l’URL %1 : écrivez %2.</translation>
    </message>
    <message>
        <source>A URL of %1 holds no &quot;#&quot;: write it as %23.</source>
        <translation>L’URL %1 ne contient pas de « # » : écrivez-le %23.</translation>
    </message>
    <message>
        <source>The URL of %1 starts with one of %2.</source>
        <translation>L’URL %1 commence par %2.</translation>
    </message>
    <message>
        <source>An &quot;@&quot; after the first &quot;/&quot;: in the password write / as %2F, ? as %3F and @ as %40, and in the robot&apos;s name @ as %40.</source>
        <translation>Un « @ » après le premier « / » : dans le mot de passe, écrivez / %2F, ? %3F et @ %40, et dans le nom du robot @ %40.</translation>
    </message>
    <message>
        <source>The URL names no host: write %1://host/….</source>
        <translation>L’URL ne nomme pas d’hôte : écrivez %1://host/….</translation>
    </message>
    <message>
        <source>The user or the password before the &quot;@&quot; is not percent-encoded correctly: write % as %25.</source>
        <translation>L’utilisateur ou le mot de passe avant le « @ » est mal encodé avec des pourcents : écrivez % %25.</translation>
    </message>
    <message>
        <source>There is no option %1; there are %2.</source>
        <translation>Il n’y a pas d’option %1 ; il y a %2.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is given twice.</source>
        <translation>L’option « %1 » est donnée deux fois.</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not percent-encoded UTF-8 text: write % as %25 and &amp; as %26.</source>
        <translation>La valeur de « %1 » n’est pas un texte UTF-8 encodé avec des pourcents : écrivez % %25 et &amp; %26.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; needs a value: %1=….</source>
        <translation>L’option « %1 » demande une valeur : %1=….</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 et %2</translation>
    </message>
</context>
<context>
    <name>Velk::PeriodText</name>
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
    <name>Velk::PlotCanvas</name>
    <message>
        <source>Seconds before now</source>
        <translation>Secondes avant maintenant</translation>
    </message>
    <message>
        <source>Seconds before now (frozen)</source>
        <translation>Secondes avant maintenant (figé)</translation>
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
    <name>Velk::PlotReadings</name>
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
    <name>Velk::PlotView</name>
    <message>
        <source>Plot of the watched keys</source>
        <translation>Graphique des clés observées</translation>
    </message>
    <message>
        <source>Nothing to plot yet: watch a key, and show it.</source>
        <translation>Rien à tracer pour l’instant : observez une clé et montrez-la.</translation>
    </message>
    <message>
        <source>The keys that are shown have no value yet that can be plotted.</source>
        <translation>Les clés montrées n’ont pas encore de valeur que l’on puisse tracer.</translation>
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
        <source>%L1 row(s) were recorded.</source>
        <translation>
            <numerusform>%L1 ligne a été enregistrée.</numerusform>
            <numerusform>%L1 lignes ont été enregistrées.</numerusform>
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
        <source>The recording ended because the connection was lost or the file could not be written. %1 Save them now.</source>
        <translation>L’enregistrement s’est arrêté parce que la connexion a été perdue ou que le fichier n’a pas pu être écrit. %1 Sauvegardez maintenant.</translation>
    </message>
</context>
<context>
    <name>Velk::RecordingDialogs</name>
    <message>
        <source>Save recording</source>
        <translation>Sauvegarder l’enregistrement</translation>
    </message>
    <message>
        <source>Recordings (*.csv);;All files (*)</source>
        <translation>Enregistrements (*.csv);;Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Enregistrement</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Sauvegarder…</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Abandonner</translation>
    </message>
</context>
<context>
    <name>Velk::RedisConnection</name>
    <message>
        <source>Redis: master switched</source>
        <translation>Redis : changement de maître</translation>
    </message>
    <message>
        <source>%1 is not the master of &quot;%2&quot; any more. The sentinels are asked for the new one.</source>
        <translation>%1 n’est plus le maître de « %2 ». Le nouveau est demandé aux sentinelles.</translation>
    </message>
    <message>
        <source>Redis: no answer</source>
        <translation>Redis : pas de réponse</translation>
    </message>
    <message>
        <source>%1 has not answered for %2 seconds. Check the server and the network.</source>
        <translation>%1 ne répond plus depuis %2 secondes. Vérifiez le serveur et le réseau.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisConnector</name>
    <message>
        <source>Redis: TLS not possible</source>
        <translation>Redis : TLS impossible</translation>
    </message>
    <message>
        <source>Redis: no password</source>
        <translation>Redis : pas de mot de passe</translation>
    </message>
    <message>
        <source>Redis: no master</source>
        <translation>Redis : pas de maître</translation>
    </message>
    <message>
        <source>The sentinel %1 knows no master of the service &quot;%2&quot;. Check the service&apos;s name in the URL.</source>
        <translation>La sentinelle %1 ne connaît aucun maître du service « %2 ». Vérifiez le nom du service dans l’URL.</translation>
    </message>
    <message>
        <source>The sentinels name %1 as the master of &quot;%2&quot;, and it is none at present: a switch is under way. They are asked again.</source>
        <translation>Les sentinelles nomment %1 comme maître de « %2 », et il ne l’est pas actuellement : un changement est en cours. Elles sont interrogées à nouveau.</translation>
    </message>
    <message>
        <source>Redis: no answer</source>
        <translation>Redis : pas de réponse</translation>
    </message>
    <message>
        <source>%1 did not answer within %2 seconds. Check the address, the network, and that no firewall swallows the connection.</source>
        <translation>%1 n’a pas répondu en %2 secondes. Vérifiez l’adresse, le réseau, et qu’aucun pare-feu n’avale la connexion.</translation>
    </message>
    <message>
        <source>%1 does not take a user name or a password. Check that it is a Redis server, and leave out the password if it wants none.</source>
        <translation>%1 n’accepte ni nom d’utilisateur ni mot de passe. Vérifiez que c’est un serveur Redis, et omettez le mot de passe s’il n’en veut pas.</translation>
    </message>
    <message>
        <source>Redis: password refused</source>
        <translation>Redis : mot de passe refusé</translation>
    </message>
    <message>
        <source>%1 did not answer within %2 seconds. Check the address, the network, and that the server&apos;s port speaks TLS.</source>
        <translation>%1 n’a pas répondu en %2 secondes. Vérifiez l’adresse, le réseau, et que le port du serveur parle TLS.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisError</name>
    <message>
        <source>Redis: password refused</source>
        <translation>Redis : mot de passe refusé</translation>
    </message>
    <message>
        <source>Redis: not permitted</source>
        <translation>Redis : non autorisé</translation>
    </message>
    <message>
        <source>Redis: key of another type</source>
        <translation>Redis : clé d’un autre type</translation>
    </message>
    <message>
        <source>Redis: server not available</source>
        <translation>Redis : serveur indisponible</translation>
    </message>
    <message>
        <source>Redis: value too long</source>
        <translation>Redis : valeur trop longue</translation>
    </message>
    <message>
        <source>Redis: error</source>
        <translation>Redis : erreur</translation>
    </message>
    <message>
        <source>%1 says that the robot&apos;s keys are on another node of its cluster (%2).</source>
        <translation>%1 dit que les clés du robot sont sur un autre nœud de sa grappe (%2).</translation>
    </message>
    <message>
        <source>%1 asks for a password. Give it in the URL as user:password@, with password-file or password-env, or in VELK_REDIS_PASSWORD.</source>
        <translation>%1 demande un mot de passe. Donnez-le dans l’URL sous la forme user:password@, avec password-file ou password-env, ou dans VELK_REDIS_PASSWORD.</translation>
    </message>
    <message>
        <source>%1 does not take the user name or the password (%2). Check both; the password may have been changed on the server.</source>
        <translation>%1 refuse le nom d’utilisateur ou le mot de passe (%2). Vérifiez les deux ; le mot de passe a peut-être été changé sur le serveur.</translation>
    </message>
    <message>
        <source>%1 does not permit this user what is needed (%2). Ask the server&apos;s administrator to allow it, with ACL SETUSER.</source>
        <translation>%1 n’autorise pas cet utilisateur à faire le nécessaire (%2). Demandez à l’administrateur du serveur de l’autoriser, avec ACL SETUSER.</translation>
    </message>
    <message>
        <source>A key on %1 holds a value of another type than the robot memory has there (%2). Check which program writes it.</source>
        <translation>Une clé de %1 contient une valeur d’un autre type que celui de la mémoire du robot (%2). Vérifiez quel programme l’écrit.</translation>
    </message>
    <message>
        <source>%1 is still loading its data. It is asked again until it is ready.</source>
        <translation>%1 charge encore ses données. Il est interrogé jusqu’à ce qu’il soit prêt.</translation>
    </message>
    <message>
        <source>The cluster of %1 is down (%2). It is asked again; check the cluster&apos;s nodes.</source>
        <translation>La grappe de %1 est hors service (%2). Elle est interrogée à nouveau ; vérifiez ses nœuds.</translation>
    </message>
    <message>
        <source>%1 is a replica and takes no writes (%2). Give the URL of the master, or its sentinels.</source>
        <translation>%1 est une réplique et n’accepte pas d’écriture (%2). Donnez l’URL du maître, ou ses sentinelles.</translation>
    </message>
    <message>
        <source>%1 cannot serve the robot now (%2). It is asked again.</source>
        <translation>%1 ne peut pas servir le robot pour l’instant (%2). Il est interrogé à nouveau.</translation>
    </message>
    <message>
        <source>A value on %1 is too long to be shown (%2 bytes).</source>
        <translation>Une valeur de %1 est trop longue pour être montrée (%2 octets).</translation>
    </message>
    <message>
        <source>%1 answered with an error: %2</source>
        <translation>%1 a répondu par une erreur : %2</translation>
    </message>
</context>
<context>
    <name>Velk::RedisFactory</name>
    <message>
        <source>a robot whose memory is on a Redis server, or in a cluster of them</source>
        <translation>un robot dont la mémoire est sur un serveur Redis, ou dans une grappe de serveurs</translation>
    </message>
    <message>
        <source>the same over TLS</source>
        <translation>la même chose par TLS</translation>
    </message>
    <message>
        <source>the same on the master that sentinels name</source>
        <translation>la même chose sur le maître que nomment des sentinelles</translation>
    </message>
    <message>
        <source>the same over TLS, with the sentinels</source>
        <translation>la même chose par TLS, avec les sentinelles</translation>
    </message>
</context>
<context>
    <name>Velk::RedisKeyLists</name>
    <message>
        <source>The key %1 on %2 is not a set, so the robot&apos;s keys cannot be listed. Check which program writes it.</source>
        <translation>La clé %1 de %2 n’est pas un ensemble : les clés du robot ne peuvent pas être énumérées. Vérifiez quel programme l’écrit.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisKeyResolver</name>
    <message>
        <source>Redis: value too long</source>
        <translation>Redis : valeur trop longue</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; on %2 is %3 MiB long and is not fetched; at most %4 MiB are. It is looked at again from time to time.</source>
        <translation>La valeur de « %1 » sur %2 fait %3 Mio et n’est pas lue ; la limite est de %4 Mio. Elle est réexaminée de temps en temps.</translation>
    </message>
    <message>
        <source>Redis: key of another type</source>
        <translation>Redis : clé d’un autre type</translation>
    </message>
    <message>
        <source>The key %1 on %2 holds a %3; an event&apos;s key is a stream. Check which program writes it.</source>
        <translation>La clé %1 de %2 contient : %3 ; celle d’un événement est un flux (stream). Vérifiez quel programme l’écrit.</translation>
    </message>
    <message>
        <source>The key %1 on %2 holds a %3; a data key&apos;s is a string or a stream. Check which program writes it.</source>
        <translation>La clé %1 de %2 contient : %3 ; celle d’une donnée est une chaîne (string) ou un flux (stream). Vérifiez quel programme l’écrit.</translation>
    </message>
    <message>
        <source>Redis: older data</source>
        <translation>Redis : données plus anciennes</translation>
    </message>
    <message>
        <source>%1 has come back with older data: of %2, occurrences and samples from %3 to %4 may be missing.</source>
        <translation>%1 est revenu avec des données plus anciennes : pour %2, des occurrences et des valeurs du %3 au %4 manquent peut-être.</translation>
    </message>
    <message>
        <source>%1 keys</source>
        <translation>%1 clés</translation>
    </message>
</context>
<context>
    <name>Velk::RedisReplyLimiter</name>
    <message>
        <source>a line of more than %1 bytes</source>
        <translation>une ligne de plus de %1 octets</translation>
    </message>
    <message>
        <source>a line that does not end with a carriage return and a line feed</source>
        <translation>une ligne qui ne se termine pas par un retour chariot et un saut de ligne</translation>
    </message>
    <message>
        <source>a reply that starts with the byte %1</source>
        <translation>une réponse qui commence par l’octet %1</translation>
    </message>
    <message>
        <source>a value whose length is not a number</source>
        <translation>une valeur dont la longueur n’est pas un nombre</translation>
    </message>
    <message>
        <source>a list whose length is not a number</source>
        <translation>une liste dont la longueur n’est pas un nombre</translation>
    </message>
    <message>
        <source>a list of %1 elements</source>
        <translation>une liste de %1 éléments</translation>
    </message>
    <message>
        <source>lists within lists, more than %1 deep</source>
        <translation>des listes dans des listes, sur plus de %1 niveaux</translation>
    </message>
</context>
<context>
    <name>Velk::RedisRobotWriter</name>
    <message>
        <source>A memory in plain mode is only read: leave out the option &quot;plain&quot; to write.</source>
        <translation>Une mémoire en mode « plain » est seulement lue : retirez l’option « plain » pour écrire.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisSocket</name>
    <message>
        <source>Redis: connection lost</source>
        <translation>Redis : connexion perdue</translation>
    </message>
    <message>
        <source>Redis: cannot connect</source>
        <translation>Redis : connexion impossible</translation>
    </message>
    <message>
        <source>Redis: protocol error</source>
        <translation>Redis : erreur de protocole</translation>
    </message>
    <message>
        <source>Out of memory while reading from %1.</source>
        <translation>Mémoire insuffisante à la lecture de %1.</translation>
    </message>
    <message>
        <source>%1 does not speak the Redis protocol (%2). Check the address and the port.</source>
        <translation>%1 ne parle pas le protocole Redis (%2). Vérifiez l’adresse et le port.</translation>
    </message>
    <message>
        <source>%1 sent a reply that nobody asked for (%2). Check the address and the port.</source>
        <translation>%1 a envoyé une réponse que personne n’a demandée (%2). Vérifiez l’adresse et le port.</translation>
    </message>
    <message>
        <source>%1 does not speak the Redis protocol (%2). Check the address and the port, and whether the server expects TLS.</source>
        <translation>%1 ne parle pas le protocole Redis (%2). Vérifiez l’adresse et le port, et si le serveur attend TLS.</translation>
    </message>
    <message>
        <source>%1 could not be trusted: %2. Check the server&apos;s certificate, and the ca-file and tls-name of the URL.</source>
        <translation>%1 n’est pas digne de confiance : %2. Vérifiez le certificat du serveur, ainsi que ca-file et tls-name dans l’URL.</translation>
    </message>
    <message>
        <source>%1 refuses the connection. Check that the server is running and that host and port are right.</source>
        <translation>%1 refuse la connexion. Vérifiez que le serveur tourne et que l’hôte et le port sont justes.</translation>
    </message>
    <message>
        <source>There is no host of the name %1. Check the host&apos;s name.</source>
        <translation>Il n’y a pas d’hôte du nom de %1. Vérifiez ce nom.</translation>
    </message>
    <message>
        <source>%1 has closed the connection.</source>
        <translation>%1 a fermé la connexion.</translation>
    </message>
    <message>
        <source>%1 has closed the connection before it was established. Check whether the server expects TLS, or a client certificate.</source>
        <translation>%1 a fermé la connexion avant qu’elle soit établie. Vérifiez si le serveur attend TLS ou un certificat client.</translation>
    </message>
    <message>
        <source>No TLS connection to %1 (%2). Check that the server&apos;s port speaks TLS.</source>
        <translation>Pas de connexion TLS à %1 (%2). Vérifiez que le port du serveur parle TLS.</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <translation>%1 : %2.</translation>
    </message>
    <message>
        <source>%1 has closed the connection before it answered. Check that it is a Redis server, and whether it expects TLS, or a client certificate.</source>
        <translation>%1 a fermé la connexion avant de répondre. Vérifiez que c’est un serveur Redis, et s’il attend TLS ou un certificat client.</translation>
    </message>
    <message>
        <source>No TLS connection to %1 (%2). Check that the server&apos;s port speaks TLS, and whether the server expects a client certificate.</source>
        <translation>Pas de connexion TLS à %1 (%2). Vérifiez que le port du serveur parle TLS, et si le serveur attend un certificat client.</translation>
    </message>
</context>
<context>
    <name>Velk::RedisUrl</name>
    <message>
        <source>The service&apos;s name is not percent-encoded UTF-8 text: write % as %25.</source>
        <translation>Le nom du service n’est pas un texte UTF-8 encodé avec des pourcents : écrivez % %25.</translation>
    </message>
    <message>
        <source>The URL does not say which service the sentinels are to be asked for: write %1://host/service/robot.</source>
        <translation>L’URL ne dit pas quel service demander aux sentinelles : écrivez %1://host/service/robot.</translation>
    </message>
    <message>
        <source>The path %1 has too many parts: a robot has one name, with / written as %2F.</source>
        <translation>Le chemin %1 a trop de parties : un robot a un seul nom, où / s’écrit %2F.</translation>
    </message>
    <message>
        <source>The robot&apos;s name is not percent-encoded UTF-8 text: write % as %25.</source>
        <translation>Le nom du robot n’est pas un texte UTF-8 encodé avec des pourcents : écrivez % %25.</translation>
    </message>
    <message>
        <source>The robot&apos;s name %1 holds a brace, which no robot&apos;s name can.</source>
        <translation>Le nom de robot %1 contient une accolade, ce qu’aucun nom de robot ne peut.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is about TLS: write redis%2 instead of redis%3 at the start.</source>
        <translation>L’option « %1 » concerne TLS : écrivez redis%2 au lieu de redis%3 au début.</translation>
    </message>
    <message>
        <source>The database %1 is not a number from 0 to %2.</source>
        <translation>La base de données %1 n’est pas un nombre de 0 à %2.</translation>
    </message>
    <message>
        <source>The pong-timeout %1 is not a number of milliseconds from 10 to 3600000.</source>
        <translation>La valeur %1 de pong-timeout n’est pas un nombre de millisecondes de 10 à 3600000.</translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not the name of an environment variable.</source>
        <translation>La valeur de « %1 » n’est pas le nom d’une variable d’environnement.</translation>
    </message>
    <message>
        <source>The option &quot;%1&quot; is about sentinels: it goes with redis+sentinel:// only.</source>
        <translation>L’option « %1 » concerne les sentinelles : elle ne va qu’avec redis+sentinel://.</translation>
    </message>
    <message>
        <source>a Redis memory</source>
        <translation>d’une mémoire Redis</translation>
    </message>
</context>
<context>
    <name>Velk::RedisWriteQueue</name>
    <message>
        <source>The key %1 on the server holds a %2, which no data key is. Check which program writes it.</source>
        <translation>La clé %1 du serveur contient : %2, ce qu’aucune donnée n’est. Vérifiez quel programme l’écrit.</translation>
    </message>
    <message>
        <source>The server does not keep up with what is written.</source>
        <translation>Le serveur ne suit pas le rythme des écritures.</translation>
    </message>
    <message>
        <source>Redis: key cannot be written</source>
        <translation>Redis : la clé ne peut pas être écrite</translation>
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
    <name>Velk::RobotLinks</name>
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
    <message>
        <source>A robot of the scheme “%1” cannot be written to. Possible are: %2.</source>
        <translation>On ne peut pas écrire dans un robot du schéma « %1 ». Sont possibles : %2.</translation>
    </message>
    <message>
        <source>This program has no connection to a robot that can be written to.</source>
        <translation>Ce programme n’a aucune connexion à un robot dans lequel on puisse écrire.</translation>
    </message>
    <message>
        <source>The connection %1 cannot be loaded: %2</source>
        <translation>La connexion %1 ne peut pas être chargée : %2</translation>
    </message>
    <message>
        <source>It is no connection of a robot.</source>
        <translation>Ce n’est pas une connexion à un robot.</translation>
    </message>
    <message>
        <source>It was built for another version of this program (%1 and not %2). Build it again.</source>
        <translation>Elle a été construite pour une autre version de ce programme (%1 et non %2). Reconstruisez-la.</translation>
    </message>
</context>
<context>
    <name>Velk::SimulatedFactory</name>
    <message>
        <source>a simulated mobile robot with an arm</source>
        <translation>un robot mobile simulé, avec un bras</translation>
    </message>
</context>
<context>
    <name>Velk::SimulatedFeed</name>
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
    <name>Velk::TlsOptions</name>
    <message>
        <source>The file %1 cannot be read: %2.</source>
        <translation>Le fichier %1 ne peut pas être lu : %2.</translation>
    </message>
    <message>
        <source>This installation of Qt has no TLS: install OpenSSL.</source>
        <translation>Cette installation de Qt n’a pas TLS : installez OpenSSL.</translation>
    </message>
    <message>
        <source>The ca-file %1 holds no certificate in PEM form.</source>
        <translation>Le fichier %1 (ca-file) ne contient aucun certificat au format PEM.</translation>
    </message>
    <message>
        <source>The cert-file %1 holds no certificate in PEM form.</source>
        <translation>Le fichier %1 (cert-file) ne contient aucun certificat au format PEM.</translation>
    </message>
    <message>
        <source>%1 holds no private key in PEM form that is not encrypted.</source>
        <translation>%1 ne contient aucune clé privée non chiffrée au format PEM.</translation>
    </message>
    <message>
        <source>There is a key-file without the certificate that it belongs to: add cert-file=PATH.</source>
        <translation>Il y a un key-file sans le certificat correspondant : ajoutez cert-file=PATH.</translation>
    </message>
</context>
<context>
    <name>Velk::WatchBar</name>
    <message>
        <source>&amp;Sample</source>
        <translation>É&amp;chantillonner</translation>
    </message>
    <message>
        <source>Sample the watched keys, or pause the sampling (F5)</source>
        <translation>Échantillonner les clés observées, ou suspendre l’échantillonnage (F5)</translation>
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
</context>
<context>
    <name>Velk::WatchOptions</name>
    <message>
        <source>velk-watch --help lists the options.</source>
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
  11  there is no display for the window
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
  11  il n’y a pas d’écran pour la fenêtre
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
<context>
    <name>Velk::WatchStatusBar</name>
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
        <source>Saved to %1</source>
        <translation>Sauvegardé dans %1</translation>
    </message>
</context>
<context>
    <name>Velk::WindowMenus</name>
    <message>
        <source>&amp;Unwatch selected keys</source>
        <translation>&amp;Ne plus observer les clés sélectionnées</translation>
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
</context>
</TS>
