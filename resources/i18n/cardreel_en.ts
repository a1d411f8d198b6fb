<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>CommandLine</name>
    <message>
        <source>This folder is no card of a drive recorder.</source>
        <translation>This folder is no card of a drive recorder.</translation>
    </message>
    <message>
        <source>%1 recordings, %2 pictures</source>
        <translation>%1 recordings, %2 pictures</translation>
    </message>
    <message>
        <source>no position</source>
        <translation>no position</translation>
    </message>
    <message>
        <source>Trip</source>
        <translation>Trip</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Picture groups</source>
        <translation>Picture groups</translation>
    </message>
    <message>
        <source>Fixes</source>
        <translation>Fixes</translation>
    </message>
    <message>
        <source>%1, %2 of them valid</source>
        <translation>%1, %2 of them valid</translation>
    </message>
    <message>
        <source>G samples</source>
        <translation>G samples</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>Warnings</translation>
    </message>
    <message>
        <source>Highest speed</source>
        <translation>Highest speed</translation>
    </message>
    <message>
        <source>Largest G</source>
        <translation>Largest G</translation>
    </message>
    <message>
        <source>would be written</source>
        <translation>would be written</translation>
    </message>
    <message>
        <source>The folder isn&apos;t empty.</source>
        <translation>The folder isn&apos;t empty.</translation>
    </message>
    <message>
        <source>There is not enough room: %1 to copy, %2 free.</source>
        <translation>There is not enough room: %1 to copy, %2 free.</translation>
    </message>
    <message>
        <source>There is nothing to copy on this card.</source>
        <translation>There is nothing to copy on this card.</translation>
    </message>
    <message>
        <source>It has no rear video.</source>
        <translation>It has no rear video.</translation>
    </message>
    <message>
        <source>It would be on the card, which is never changed.</source>
        <translation>It would be on the card, which is never changed.</translation>
    </message>
    <message>
        <source>There are no recordings on this card.</source>
        <translation>There are no recordings on this card.</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Cancelling…</translation>
    </message>
</context>
<context>
    <name>Keys</name>
    <message>
        <source>EVENT RECORD</source>
        <extracomment>イベント記録 プレースマーク名称</extracomment>
        <translation>Event recording</translation>
    </message>
    <message>
        <source>MANUAL RECORD</source>
        <extracomment>手動記録 プレースマーク名称</extracomment>
        <translation>Manual recording</translation>
    </message>
    <message>
        <source>PARKING RECORD</source>
        <extracomment>駐車記録 プレースマーク名称</extracomment>
        <translation>Parking recording</translation>
    </message>
    <message>
        <source>The video player couldn&apos;t be started.</source>
        <translation>The video player couldn&apos;t be started.</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be opened.</source>
        <translation>The video &quot;%1&quot; can&apos;t be opened.</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be decoded.</source>
        <translation>The video &quot;%1&quot; can&apos;t be decoded.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; holds no video.</source>
        <translation>&quot;%1&quot; holds no video.</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be read any further.</source>
        <translation>The video &quot;%1&quot; can&apos;t be read any further.</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; holds no picture.</source>
        <translation>The video &quot;%1&quot; holds no picture.</translation>
    </message>
    <message>
        <source>発進遅れ</source>
        <translation>Start delay</translation>
    </message>
    <message>
        <source>左車線注意</source>
        <translation>Lane departure</translation>
    </message>
    <message>
        <source>前方衝突注意</source>
        <translation>Forward collision</translation>
    </message>
    <message>
        <source>EVENTNAME_NORMAL</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>EVENTNAME_EVENT</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>EVENTNAME_MANUAL</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>EVENTNAME_PARKING</source>
        <translation>Parking</translation>
    </message>
    <message>
        <source>発進遅れ,</source>
        <translation>Start delay,</translation>
    </message>
    <message>
        <source>左車線注意,</source>
        <translation>Lane departure left,</translation>
    </message>
    <message>
        <source>右車線注意,</source>
        <translation>Lane departure right,</translation>
    </message>
    <message>
        <source>衝突注意,</source>
        <translation>Forward collision,</translation>
    </message>
    <message>
        <source>長時間走行注意,</source>
        <translation>Long drive,</translation>
    </message>
    <message>
        <source>ふらつき注意,</source>
        <translation>Weaving,</translation>
    </message>
    <message>
        <source>急加速注意,</source>
        <translation>Rapid acceleration,</translation>
    </message>
    <message>
        <source>急減速注意,</source>
        <translation>Rapid deceleration,</translation>
    </message>
    <message>
        <source>逆走,</source>
        <translation>Wrong-way driving,</translation>
    </message>
    <message>
        <source>一時停止注意,</source>
        <translation>Stop sign,</translation>
    </message>
    <message>
        <source>歩行者衝突注意,</source>
        <translation>Pedestrian collision,</translation>
    </message>
    <message>
        <source>急ハンドル注意,</source>
        <translation>Abrupt steering,</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Failed to load configuration file</source>
        <translation>Failed to load configuration file</translation>
    </message>
    <message>
        <source>Apply the default settings</source>
        <translation>Apply the default settings</translation>
    </message>
    <message>
        <source>The settings on the card were changed by another program. Overwrite them?</source>
        <translation>The settings on the card were changed by another program. Overwrite them?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Could not write to the configuration file</source>
        <translation>Could not write to the configuration file</translation>
    </message>
    <message>
        <source>saved the setting</source>
        <translation>saved the setting</translation>
    </message>
    <message>
        <source>Save the settings?</source>
        <translation>Save the settings?</translation>
    </message>
    <message>
        <source>Reset the setting to the initial value?</source>
        <translation>Reset the setting to the initial value?</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>OFF</translation>
    </message>
    <message>
        <source>15秒間</source>
        <translation>15 seconds</translation>
    </message>
    <message>
        <source>30秒間</source>
        <translation>30 seconds</translation>
    </message>
    <message>
        <source>1分間</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>30秒後</source>
        <translation>After 30 seconds</translation>
    </message>
    <message>
        <source>1分後</source>
        <translation>After 1 minute</translation>
    </message>
    <message>
        <source>3分後</source>
        <translation>After 3 minutes</translation>
    </message>
    <message>
        <source>30秒前</source>
        <translation>30 seconds before</translation>
    </message>
    <message>
        <source>1分前</source>
        <translation>1 minute before</translation>
    </message>
    <message>
        <source>3分前</source>
        <translation>3 minutes before</translation>
    </message>
    <message>
        <source>標準画質</source>
        <translation>Standard quality</translation>
    </message>
    <message>
        <source>長時間画質</source>
        <translation>Long recording</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>ON</translation>
    </message>
    <message>
        <source>Free size:</source>
        <translation>Free size:</translation>
    </message>
    <message>
        <source>Required size:</source>
        <translation>Required size:</translation>
    </message>
    <message>
        <source>Execute</source>
        <translation>Execute</translation>
    </message>
    <message>
        <source>The program csh, which starts zip, can&apos;t be started</source>
        <translation>The program csh, which starts zip, can&apos;t be started</translation>
    </message>
    <message>
        <source>The program zip is not installed</source>
        <translation>The program zip is not installed</translation>
    </message>
    <message>
        <source>The archive can&apos;t be made: %@</source>
        <translation>The archive can&apos;t be made: %@</translation>
    </message>
    <message>
        <source>There is no folder for caches</source>
        <translation>There is no folder for caches</translation>
    </message>
    <message>
        <source>The card is never changed; choose a place elsewhere</source>
        <translation>The card is never changed; choose a place elsewhere</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>ROUTE</source>
        <translation>ROUTE</translation>
    </message>
    <message>
        <source>SPD: %@ mph&lt;br&gt;</source>
        <translation>SPD: %@ mph&lt;br&gt;</translation>
    </message>
    <message>
        <source>SPD: %@ km/h&lt;br&gt;</source>
        <translation>SPD: %@ km/h&lt;br&gt;</translation>
    </message>
    <message>
        <source>LAT.: %1$@&lt;br&gt;LONG.: %2$@&lt;br&gt;</source>
        <translation>LAT.: %1$@&lt;br&gt;LONG.: %2$@&lt;br&gt;</translation>
    </message>
    <message>
        <source>DATE/TIME: %@&lt;br&gt;</source>
        <translation>DATE/TIME: %@&lt;br&gt;</translation>
    </message>
    <message>
        <source>EVENT: %@&lt;br&gt;</source>
        <translation>EVENT: %@&lt;br&gt;</translation>
    </message>
    <message>
        <source>DIRECTION: %@ °</source>
        <translation>DIRECTION: %@ °</translation>
    </message>
    <message>
        <source>An error occurred when writing data</source>
        <translation>An error occurred when writing data</translation>
    </message>
    <message>
        <source>KML/KMZ export is complete</source>
        <translation>KML/KMZ export is complete</translation>
    </message>
    <message>
        <source>An error occurred during backup</source>
        <translation>An error occurred during backup</translation>
    </message>
    <message>
        <source>Backup is complete</source>
        <translation>Backup is complete</translation>
    </message>
</context>
<context>
    <name>SettingTexts</name>
    <message>
        <source>Recording</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>Video &amp;quality</source>
        <translation>Video &amp;quality</translation>
    </message>
    <message>
        <source>&amp;Audio recording</source>
        <translation>&amp;Audio recording</translation>
    </message>
    <message>
        <source>Impact sensitivity while &amp;driving</source>
        <translation>Impact sensitivity while &amp;driving</translation>
    </message>
    <message>
        <source>Overwrite old &amp;manual recordings</source>
        <translation>Overwrite old &amp;manual recordings</translation>
    </message>
    <message>
        <source>Overwrite old &amp;event recordings</source>
        <translation>Overwrite old &amp;event recordings</translation>
    </message>
    <message>
        <source>Overwrite old &amp;junction recordings</source>
        <translation>Overwrite old &amp;junction recordings</translation>
    </message>
    <message>
        <source>Parking</source>
        <translation>Parking</translation>
    </message>
    <message>
        <source>&amp;Parking recording</source>
        <translation>&amp;Parking recording</translation>
    </message>
    <message>
        <source>Parking recording p&amp;lus</source>
        <translation>Parking recording p&amp;lus</translation>
    </message>
    <message>
        <source>Len&amp;gth of parking recordings</source>
        <translation>Len&amp;gth of parking recordings</translation>
    </message>
    <message>
        <source>Parking recording &amp;starts</source>
        <translation>Parking recording &amp;starts</translation>
    </message>
    <message>
        <source>Parking recording e&amp;nds</source>
        <translation>Parking recording e&amp;nds</translation>
    </message>
    <message>
        <source>Impact sensitivity while par&amp;ked</source>
        <translation>Impact sensitivity while par&amp;ked</translation>
    </message>
    <message>
        <source>Overwrite old park&amp;ing recordings</source>
        <translation>Overwrite old park&amp;ing recordings</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Sound</translation>
    </message>
    <message>
        <source>Notification &amp;volume</source>
        <translation>Notification &amp;volume</translation>
    </message>
    <message>
        <source>Play&amp;back volume</source>
        <translation>Play&amp;back volume</translation>
    </message>
    <message>
        <source>Display and clock</source>
        <translation>Display and clock</translation>
    </message>
    <message>
        <source>&amp;Time zone</source>
        <translation>&amp;Time zone</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>C&amp;hild lock</source>
        <translation>C&amp;hild lock</translation>
    </message>
    <message>
        <source>Batter&amp;y connection</source>
        <translation>Batter&amp;y connection</translation>
    </message>
    <message>
        <source>Reset the pass&amp;word</source>
        <translation>Reset the pass&amp;word</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Unknown (%1)</source>
        <translation>Unknown (%1)</translation>
    </message>
    <message>
        <source>This model&apos;s file has no place for it.</source>
        <translation>This model&apos;s file has no place for it.</translation>
    </message>
    <message>
        <source>Isn&apos;t saved: the card gets zero, whatever is chosen.</source>
        <translation>Isn&apos;t saved: the card gets zero, whatever is chosen.</translation>
    </message>
    <message>
        <source>Isn&apos;t saved: this model&apos;s file has no place for it.</source>
        <translation>Isn&apos;t saved: this model&apos;s file has no place for it.</translation>
    </message>
    <message>
        <source>Only shown. Saving sets it to zero on the card.</source>
        <translation>Only shown. Saving sets it to zero on the card.</translation>
    </message>
    <message>
        <source>Only shown. It stays as it is on the card.</source>
        <translation>Only shown. It stays as it is on the card.</translation>
    </message>
    <message>
        <source>No settings could be read from the card, so these are the factory&apos;s. The recorder&apos;s model isn&apos;t known: only what all models have is saved.</source>
        <translation>No settings could be read from the card, so these are the factory&apos;s. The recorder&apos;s model isn&apos;t known: only what all models have is saved.</translation>
    </message>
    <message>
        <source>Model %1, read from %2.</source>
        <comment>0E00, settings.bin</comment>
        <translation>Model %1, read from %2.</translation>
    </message>
    <message>
        <source>That is a backup, which saving removes.</source>
        <translation>That is a backup, which saving removes.</translation>
    </message>
    <message>
        <source>The model isn&apos;t known: only what all models have is saved, and the rest of the file is lost.</source>
        <translation>The model isn&apos;t known: only what all models have is saved, and the rest of the file is lost.</translation>
    </message>
    <message>
        <source>What is saved for this model can&apos;t be opened here again.</source>
        <translation>What is saved for this model can&apos;t be opened here again.</translation>
    </message>
</context>
<context>
    <name>cardreel::BackUpSheet</name>
    <message>
        <source>&amp;All pictures, and the selected recordings (%1)</source>
        <translation>&amp;All pictures, and the selected recordings (%1)</translation>
    </message>
    <message>
        <source>&amp;No pictures, only the selected recordings (%1)</source>
        <translation>&amp;No pictures, only the selected recordings (%1)</translation>
    </message>
    <message>
        <source>&amp;Only all pictures</source>
        <translation>&amp;Only all pictures</translation>
    </message>
    <message>
        <source>&amp;Read the copies back and compare</source>
        <translation>&amp;Read the copies back and compare</translation>
    </message>
    <message>
        <source>Back Up</source>
        <translation>Back Up</translation>
    </message>
    <message>
        <source>Takes about twice as long</source>
        <translation>Takes about twice as long</translation>
    </message>
    <message>
        <source>What is copied:</source>
        <translation>What is copied:</translation>
    </message>
    <message>
        <source>In the &amp;folder:</source>
        <translation>In the &amp;folder:</translation>
    </message>
    <message>
        <source>As a new folder with the na&amp;me:</source>
        <translation>As a new folder with the na&amp;me:</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>No recording is selected.</source>
        <translation>No recording is selected.</translation>
    </message>
    <message>
        <source>There are no pictures on this card.</source>
        <translation>There are no pictures on this card.</translation>
    </message>
    <message>
        <source>A folder&apos;s name can&apos;t hold a slash.</source>
        <translation>A folder&apos;s name can&apos;t hold a slash.</translation>
    </message>
    <message>
        <source>It must be more than the required size and 1 MiB.</source>
        <translation>It must be more than the required size and 1 MiB.</translation>
    </message>
    <message>
        <source>Choose the Folder for the Backup</source>
        <translation>Choose the Folder for the Backup</translation>
    </message>
    <message>
        <source>“%1” is there already and isn&apos;t empty. Back up into it?</source>
        <translation>“%1” is there already and isn&apos;t empty. Back up into it?</translation>
    </message>
    <message>
        <source>If the backup fails or is cancelled, the whole folder is removed with everything that is in it, also what was there before.</source>
        <translation>If the backup fails or is cancelled, the whole folder is removed with everything that is in it, also what was there before.</translation>
    </message>
    <message>
        <source>&amp;Use This Folder</source>
        <translation>&amp;Use This Folder</translation>
    </message>
    <message>
        <source>%1 of %2 recordings are selected; Ctrl+A in the list selects all.</source>
        <translation>%1 of %2 recordings are selected; Ctrl+A in the list selects all.</translation>
    </message>
</context>
<context>
    <name>cardreel::CapturePanel</name>
    <message>
        <source>Capture Picture</source>
        <translation>Capture Picture</translation>
    </message>
    <message>
        <source>JPEG picture (*.jpg *.jpeg)</source>
        <translation>JPEG picture (*.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>PNG picture, without the place (*.png)</source>
        <translation>PNG picture, without the place (*.png)</translation>
    </message>
    <message>
        <source>The card is never changed.</source>
        <translation>The card is never changed.</translation>
    </message>
    <message>
        <source>Choose a folder that isn&apos;t on the card.</source>
        <translation>Choose a folder that isn&apos;t on the card.</translation>
    </message>
    <message>
        <source>The new picture would take its place.</source>
        <translation>The new picture would take its place.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message>
        <source>There is no picture at this moment of the video.</source>
        <translation>There is no picture at this moment of the video.</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>Saved to %1</translation>
    </message>
    <message>
        <source>The picture couldn&apos;t be saved.</source>
        <translation>The picture couldn&apos;t be saved.</translation>
    </message>
    <message>
        <source>“%1” is there already.</source>
        <translation>“%1” is there already.</translation>
    </message>
</context>
<context>
    <name>cardreel::CardApplication</name>
    <message>
        <source>Open Card</source>
        <translation>Open Card</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>There is no such folder.</translation>
    </message>
    <message>
        <source>It is a file. Choose the folder that holds the recordings&apos; folders.</source>
        <translation>It is a file. Choose the folder that holds the recordings&apos; folders.</translation>
    </message>
    <message>
        <source>It holds none of the folders that a recorder makes: NORMAL, EVENT, MANUAL, PARKING, PICTURE or REAR. Choose the folder that they are in.</source>
        <translation>It holds none of the folders that a recorder makes: NORMAL, EVENT, MANUAL, PARKING, PICTURE or REAR. Choose the folder that they are in.</translation>
    </message>
    <message>
        <source>No card</source>
        <translation>No card</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be opened as a card.</source>
        <translation>“%1” can&apos;t be opened as a card.</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Clear List</translation>
    </message>
    <message>
        <source>It can&apos;t be read: you may lack the permission.</source>
        <translation>It can&apos;t be read: you may lack the permission.</translation>
    </message>
    <message>
        <source>&amp;Stop and Quit</source>
        <translation>&amp;Stop and Quit</translation>
    </message>
</context>
<context>
    <name>cardreel::CardChip</name>
    <message>
        <source>%1 free</source>
        <translation>%1 free</translation>
    </message>
    <message>
        <source>No card</source>
        <translation>No card</translation>
    </message>
</context>
<context>
    <name>cardreel::CardJobs</name>
    <message>
        <source>&amp;Export Route…</source>
        <translation>&amp;Export Route…</translation>
    </message>
    <message>
        <source>&amp;Back Up…</source>
        <translation>&amp;Back Up…</translation>
    </message>
    <message>
        <source>Export the route to a file (Ctrl+E)</source>
        <translation>Export the route to a file (Ctrl+E)</translation>
    </message>
    <message>
        <source>Copy recordings and pictures to another disk (Ctrl+B)</source>
        <translation>Copy recordings and pictures to another disk (Ctrl+B)</translation>
    </message>
    <message>
        <source>Exporting to “%1”</source>
        <translation>Exporting to “%1”</translation>
    </message>
    <message>
        <source>Backing up to “%1”</source>
        <translation>Backing up to “%1”</translation>
    </message>
    <message>
        <source>&amp;Stop and Close</source>
        <translation>&amp;Stop and Close</translation>
    </message>
    <message numerus="yes">
        <source>%n export(s) and backup(s) are running.</source>
        <translation>
            <numerusform>%n export or backup is running.</numerusform>
            <numerusform>%n exports and backups are running.</numerusform>
        </translation>
    </message>
    <message>
        <source>If you stop them, what is unfinished is removed.</source>
        <translation>If you stop them, what is unfinished is removed.</translation>
    </message>
    <message>
        <source>A backup is running.</source>
        <translation>A backup is running.</translation>
    </message>
    <message>
        <source>If you stop it, its folder is removed with everything in it.</source>
        <translation>If you stop it, its folder is removed with everything in it.</translation>
    </message>
    <message>
        <source>An export is running.</source>
        <translation>An export is running.</translation>
    </message>
    <message>
        <source>If you stop it, no file is written.</source>
        <translation>If you stop it, no file is written.</translation>
    </message>
    <message>
        <source>&amp;Keep Running</source>
        <translation>&amp;Keep Running</translation>
    </message>
</context>
<context>
    <name>cardreel::CustomMapCalloutView</name>
    <message>
        <source>Show Recording</source>
        <translation>Show Recording</translation>
    </message>
    <message>
        <source>Present position</source>
        <translation>Present position</translation>
    </message>
</context>
<context>
    <name>cardreel::DCFAsyncBackUp</name>
    <message numerus="yes">
        <source>%n file(s) weren&apos;t on the card any more and are not in the backup.</source>
        <translation>
            <numerusform>%n file wasn&apos;t on the card any more and is not in the backup.</numerusform>
            <numerusform>%n files weren&apos;t on the card any more and are not in the backup.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>cardreel::ExportSheet</name>
    <message>
        <source>As KML, but in a much smaller file.</source>
        <translation>As KML, but in a much smaller file.</translation>
    </message>
    <message>
        <source>Tracks and waypoints, for navigation programs.</source>
        <translation>Tracks and waypoints, for navigation programs.</translation>
    </message>
    <message>
        <source>Routes by day and events, for globes and map programs.</source>
        <translation>Routes by day and events, for globes and map programs.</translation>
    </message>
    <message>
        <source>&amp;Selected recordings (%1)</source>
        <translation>&amp;Selected recordings (%1)</translation>
    </message>
    <message>
        <source>&amp;All recordings (%1)</source>
        <translation>&amp;All recordings (%1)</translation>
    </message>
    <message>
        <source>Export Route</source>
        <translation>Export Route</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Export</translation>
    </message>
    <message>
        <source>Recordings:</source>
        <translation>Recordings:</translation>
    </message>
    <message>
        <source>&amp;Format:</source>
        <translation>&amp;Format:</translation>
    </message>
    <message>
        <source>Fi&amp;le:</source>
        <translation>Fi&amp;le:</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Route</source>
        <translation>Route</translation>
    </message>
    <message>
        <source>“%1” is there already. Replace it?</source>
        <translation>“%1” is there already. Replace it?</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Replace</translation>
    </message>
</context>
<context>
    <name>cardreel::FileError</name>
    <message>
        <source>The card is gone</source>
        <translation>The card is gone</translation>
    </message>
    <message>
        <source>The backup and the card lie within each other</source>
        <translation>The backup and the card lie within each other</translation>
    </message>
    <message>
        <source>Another backup is still at work there</source>
        <translation>Another backup is still at work there</translation>
    </message>
    <message>
        <source>There is no picture to write</source>
        <translation>There is no picture to write</translation>
    </message>
    <message>
        <source>Pictures are written as jpg, jpeg or png</source>
        <translation>Pictures are written as jpg, jpeg or png</translation>
    </message>
    <message>
        <source>Not a regular file</source>
        <translation>Not a regular file</translation>
    </message>
    <message>
        <source>Its length changed while it was copied</source>
        <translation>Its length changed while it was copied</translation>
    </message>
    <message>
        <source>The copy isn&apos;t as long as its source</source>
        <translation>The copy isn&apos;t as long as its source</translation>
    </message>
    <message>
        <source>The copy doesn&apos;t read back as its source</source>
        <translation>The copy doesn&apos;t read back as its source</translation>
    </message>
    <message>
        <source>It is a link, which may lead to a card</source>
        <translation>It is a link, which may lead to a card</translation>
    </message>
</context>
<context>
    <name>cardreel::GraphLayerView</name>
    <message>
        <source>speed</source>
        <translation>speed</translation>
    </message>
    <message>
        <source>SPEED(mph)</source>
        <translation>SPEED(mph)</translation>
    </message>
    <message>
        <source>SPEED(km/h)</source>
        <translation>SPEED(km/h)</translation>
    </message>
    <message>
        <source>ACCELERATION(G)</source>
        <translation>ACCELERATION(G)</translation>
    </message>
</context>
<context>
    <name>cardreel::GraphViewController</name>
    <message>
        <source>Speed and acceleration</source>
        <translation>Speed and acceleration</translation>
    </message>
    <message>
        <source>Curves of the whole recording, and the figures of the moment. Click or drag on the curves to go there.</source>
        <translation>Curves of the whole recording, and the figures of the moment. Click or drag on the curves to go there.</translation>
    </message>
    <message>
        <source>No recording is shown.</source>
        <translation>No recording is shown.</translation>
    </message>
    <message>
        <source>Reading telemetry…</source>
        <translation>Reading telemetry…</translation>
    </message>
    <message>
        <source>This recording has no telemetry.</source>
        <translation>This recording has no telemetry.</translation>
    </message>
</context>
<context>
    <name>cardreel::LeadButton</name>
    <message>
        <source>Lead other windows</source>
        <translation>Lead other windows</translation>
    </message>
    <message>
        <source>The other windows show the same time of day as this one</source>
        <translation>The other windows show the same time of day as this one</translation>
    </message>
</context>
<context>
    <name>cardreel::LibraryPanel</name>
    <message>
        <source>Recordings</source>
        <translation>Recordings</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>This card holds no recordings.</source>
        <translation>This card holds no recordings.</translation>
    </message>
    <message>
        <source>No event, manual or parking recordings on this card.</source>
        <translation>No event, manual or parking recordings on this card.</translation>
    </message>
    <message>
        <source>This card holds no pictures.</source>
        <translation>This card holds no pictures.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a tab&apos;s name and how many rows it has</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>cardreel::MainWindow</name>
    <message>
        <source>Open a recorder&apos;s memory card</source>
        <translation>Open a recorder&apos;s memory card</translation>
    </message>
    <message>
        <source>Choose the card or a folder copied from one, or drop it here.</source>
        <translation>Choose the card or a folder copied from one, or drop it here.</translation>
    </message>
    <message>
        <source>Open card…</source>
        <translation>Open card…</translation>
    </message>
    <message>
        <source>Open a card (Ctrl+O)</source>
        <translation>Open a card (Ctrl+O)</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>Rear</source>
        <translation>Rear</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Open…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Open &amp;Recent</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>&amp;Close Window</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Playback</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>&amp;About Cardreel</source>
        <translation>&amp;About Cardreel</translation>
    </message>
    <message>
        <source>About Cardreel</source>
        <translation>About Cardreel</translation>
    </message>
    <message>
        <source>Cardreel %1
Reviews the memory cards of vehicle drive recorders.</source>
        <translation>Cardreel %1
Reviews the memory cards of vehicle drive recorders.</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Appearance</translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation>As the &amp;Desktop</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dark</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Light</translation>
    </message>
    <message>
        <source>%1 – Cardreel</source>
        <translation>%1 – Cardreel</translation>
    </message>
    <message numerus="yes">
        <source>%n recording(s)</source>
        <translation>
            <numerusform>%n recording</numerusform>
            <numerusform>%n recordings</numerusform>
        </translation>
    </message>
    <message>
        <source>There is nothing to play on this card.</source>
        <translation>There is nothing to play on this card.</translation>
    </message>
    <message>
        <source>Reading telemetry %1 of %2</source>
        <translation>Reading telemetry %1 of %2</translation>
    </message>
    <message>
        <source>The card has been removed. Put it back to go on.</source>
        <translation>The card has been removed. Put it back to go on.</translation>
    </message>
    <message>
        <source>Synchronization canceled.</source>
        <translation>Synchronization canceled.</translation>
    </message>
    <message>
        <source>Select the media to play or synchronize.</source>
        <translation>Select the media to play or synchronize.</translation>
    </message>
    <message>
        <source>&amp;New Window</source>
        <translation>&amp;New Window</translation>
    </message>
    <message>
        <source>Re&amp;cordings</source>
        <translation>Re&amp;cordings</translation>
    </message>
    <message>
        <source>&amp;Events</source>
        <translation>&amp;Events</translation>
    </message>
    <message>
        <source>&amp;Pictures</source>
        <translation>&amp;Pictures</translation>
    </message>
    <message>
        <source>Rear Ca&amp;mera</source>
        <translation>Rear Ca&amp;mera</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoom</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Full Screen</translation>
    </message>
    <message>
        <source>&amp;Leave Full Screen</source>
        <translation>&amp;Leave Full Screen</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Keyboard Shortcuts</translation>
    </message>
    <message>
        <source>&amp;Map</source>
        <translation>&amp;Map</translation>
    </message>
    <message>
        <source>&amp;Graph</source>
        <translation>&amp;Graph</translation>
    </message>
    <message>
        <source>M&amp;ap</source>
        <translation>M&amp;ap</translation>
    </message>
    <message>
        <source>S&amp;wap Graph and Map</source>
        <translation>S&amp;wap Graph and Map</translation>
    </message>
    <message>
        <source>Recorder settings…</source>
        <translation>Recorder settings…</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>Recorder &amp;settings…</source>
        <translation>Recorder &amp;settings…</translation>
    </message>
    <message>
        <source>Settings of another &amp;card…</source>
        <translation>Settings of another &amp;card…</translation>
    </message>
    <message>
        <source>Export route…</source>
        <translation>Export route…</translation>
    </message>
    <message>
        <source>Back up…</source>
        <translation>Back up…</translation>
    </message>
</context>
<context>
    <name>cardreel::MapActions</name>
    <message>
        <source>&amp;Routes</source>
        <translation>&amp;Routes</translation>
    </message>
    <message>
        <source>Re&amp;cordings</source>
        <translation>Re&amp;cordings</translation>
    </message>
    <message>
        <source>&amp;Events</source>
        <translation>&amp;Events</translation>
    </message>
    <message>
        <source>&amp;Position</source>
        <translation>&amp;Position</translation>
    </message>
    <message>
        <source>&amp;Follow Position</source>
        <translation>&amp;Follow Position</translation>
    </message>
    <message>
        <source>Map &amp;Background…</source>
        <translation>Map &amp;Background…</translation>
    </message>
    <message>
        <source>Zoom Map &amp;In</source>
        <translation>Zoom Map &amp;In</translation>
    </message>
    <message>
        <source>Zoom Map &amp;Out</source>
        <translation>Zoom Map &amp;Out</translation>
    </message>
    <message>
        <source>Show &amp;All Routes</source>
        <translation>Show &amp;All Routes</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>what a button does, and its key</comment>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>cardreel::MapBackgroundSheet</name>
    <message>
        <source>&amp;OpenStreetMap, from the network</source>
        <translation>&amp;OpenStreetMap, from the network</translation>
    </message>
    <message>
        <source>Another tile &amp;server</source>
        <translation>Another tile &amp;server</translation>
    </message>
    <message>
        <source>Tiles on this &amp;computer</source>
        <translation>Tiles on this &amp;computer</translation>
    </message>
    <message>
        <source>&amp;Nothing: only a grid of degrees</source>
        <translation>&amp;Nothing: only a grid of degrees</translation>
    </message>
    <message>
        <source>Map Background</source>
        <translation>Map Background</translation>
    </message>
    <message>
        <source>Address, with {z}, {x} and {y}:</source>
        <translation>Address, with {z}, {x} and {y}:</translation>
    </message>
    <message>
        <source>Shown on the map as its source:</source>
        <translation>Shown on the map as its source:</translation>
    </message>
    <message>
        <source>An MBTiles file, or a folder with z/x/y.png:</source>
        <translation>An MBTiles file, or a folder with z/x/y.png:</translation>
    </message>
    <message>
        <source>Choose &amp;File…</source>
        <translation>Choose &amp;File…</translation>
    </message>
    <message>
        <source>Choose Fol&amp;der…</source>
        <translation>Choose Fol&amp;der…</translation>
    </message>
    <message>
        <source>Choose Tiles</source>
        <translation>Choose Tiles</translation>
    </message>
    <message>
        <source>Choose an MBTiles File</source>
        <translation>Choose an MBTiles File</translation>
    </message>
    <message>
        <source>MBTiles (*.mbtiles)</source>
        <translation>MBTiles (*.mbtiles)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>All files (*)</translation>
    </message>
</context>
<context>
    <name>cardreel::MapControls</name>
    <message>
        <source>Map Menu</source>
        <translation>Map Menu</translation>
    </message>
</context>
<context>
    <name>cardreel::MapTexts</name>
    <message>
        <source>%1 %2</source>
        <comment>speed and its unit</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>heading %1°</source>
        <translation>heading %1°</translation>
    </message>
    <message>
        <source>No signal between %1 and %2</source>
        <translation>No signal between %1 and %2</translation>
    </message>
    <message>
        <source>%1  ·  %2</source>
        <comment>time and speed</comment>
        <translation>%1  ·  %2</translation>
    </message>
    <message>
        <source>No GPS position at this moment.</source>
        <translation>No GPS position at this moment.</translation>
    </message>
</context>
<context>
    <name>cardreel::MapVewController</name>
    <message>
        <source>Map</source>
        <translation>Map</translation>
    </message>
</context>
<context>
    <name>cardreel::MapView</name>
    <message>
        <source>Map</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>The map server can&apos;t be reached. Routes are shown without a map.</source>
        <translation>The map server can&apos;t be reached. Routes are shown without a map.</translation>
    </message>
    <message>
        <source>The map&apos;s tiles can&apos;t be read. Routes are shown without a map.</source>
        <translation>The map&apos;s tiles can&apos;t be read. Routes are shown without a map.</translation>
    </message>
</context>
<context>
    <name>cardreel::MediaController</name>
    <message>
        <source>The file wasn&apos;t written: %1</source>
        <translation>The file wasn&apos;t written: %1</translation>
    </message>
</context>
<context>
    <name>cardreel::MomentDisplay</name>
    <message>
        <source>This recording has no rear video.</source>
        <translation>This recording has no rear video.</translation>
    </message>
    <message>
        <source>Reading telemetry…</source>
        <translation>Reading telemetry…</translation>
    </message>
    <message>
        <source>No GPS position at this moment.</source>
        <translation>No GPS position at this moment.</translation>
    </message>
    <message>
        <source>This picture carries no position.</source>
        <translation>This picture carries no position.</translation>
    </message>
</context>
<context>
    <name>cardreel::NeedleView</name>
    <message>
        <source>Speedometer</source>
        <translation>Speedometer</translation>
    </message>
</context>
<context>
    <name>cardreel::PaneControls</name>
    <message>
        <source>Zoomed freely</source>
        <translation>Zoomed freely</translation>
    </message>
</context>
<context>
    <name>cardreel::PathField</name>
    <message>
        <source>&amp;Browse…</source>
        <translation>&amp;Browse…</translation>
    </message>
</context>
<context>
    <name>cardreel::PictureListModel</name>
    <message>
        <source>%1  ·  with position</source>
        <translation>%1  ·  with position</translation>
    </message>
</context>
<context>
    <name>cardreel::PlaceTexts</name>
    <message>
        <source>There is no folder “%1”.</source>
        <translation>There is no folder “%1”.</translation>
    </message>
    <message>
        <source>“%1” is no folder.</source>
        <translation>“%1” is no folder.</translation>
    </message>
    <message>
        <source>You may not write to the folder “%1”.</source>
        <translation>You may not write to the folder “%1”.</translation>
    </message>
    <message>
        <source>That is on the card, which is never changed. Choose another folder.</source>
        <translation>That is on the card, which is never changed. Choose another folder.</translation>
    </message>
    <message>
        <source>“%1” is a folder.</source>
        <translation>“%1” is a folder.</translation>
    </message>
    <message>
        <source>A folder can&apos;t have this name.</source>
        <translation>A folder can&apos;t have this name.</translation>
    </message>
    <message>
        <source>The backup and the card would lie within each other. Choose another folder.</source>
        <translation>The backup and the card would lie within each other. Choose another folder.</translation>
    </message>
    <message>
        <source>There is a file of the name “%1”.</source>
        <translation>There is a file of the name “%1”.</translation>
    </message>
</context>
<context>
    <name>cardreel::PlaybackActions</name>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>&amp;Play or Pause</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>&amp;Faster</translation>
    </message>
    <message>
        <source>&amp;Slower</source>
        <translation>&amp;Slower</translation>
    </message>
    <message>
        <source>5 Seconds &amp;Back</source>
        <translation>5 Seconds &amp;Back</translation>
    </message>
    <message>
        <source>5 Seconds For&amp;ward</source>
        <translation>5 Seconds For&amp;ward</translation>
    </message>
    <message>
        <source>1 Second Back</source>
        <translation>1 Second Back</translation>
    </message>
    <message>
        <source>1 Second Forward</source>
        <translation>1 Second Forward</translation>
    </message>
    <message>
        <source>Previous F&amp;rame</source>
        <translation>Previous F&amp;rame</translation>
    </message>
    <message>
        <source>Next Fra&amp;me</source>
        <translation>Next Fra&amp;me</translation>
    </message>
    <message>
        <source>Be&amp;ginning of the Recording</source>
        <translation>Be&amp;ginning of the Recording</translation>
    </message>
    <message>
        <source>&amp;End of the Recording</source>
        <translation>&amp;End of the Recording</translation>
    </message>
    <message>
        <source>Pre&amp;vious Recording</source>
        <translation>Pre&amp;vious Recording</translation>
    </message>
    <message>
        <source>&amp;Next Recording</source>
        <translation>&amp;Next Recording</translation>
    </message>
    <message>
        <source>M&amp;ute</source>
        <translation>M&amp;ute</translation>
    </message>
    <message>
        <source>&amp;Whole Picture</source>
        <translation>&amp;Whole Picture</translation>
    </message>
    <message>
        <source>&amp;Middle</source>
        <translation>&amp;Middle</translation>
    </message>
    <message>
        <source>Upper &amp;Left Quarter</source>
        <translation>Upper &amp;Left Quarter</translation>
    </message>
    <message>
        <source>Upper &amp;Right Quarter</source>
        <translation>Upper &amp;Right Quarter</translation>
    </message>
    <message>
        <source>Lower L&amp;eft Quarter</source>
        <translation>Lower L&amp;eft Quarter</translation>
    </message>
    <message>
        <source>Lower Ri&amp;ght Quarter</source>
        <translation>Lower Ri&amp;ght Quarter</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Zoom &amp;Out</translation>
    </message>
    <message>
        <source>Mirror Left to Righ&amp;t</source>
        <translation>Mirror Left to Righ&amp;t</translation>
    </message>
    <message>
        <source>Reset &amp;Zoom</source>
        <translation>Reset &amp;Zoom</translation>
    </message>
    <message>
        <source>L&amp;ouder</source>
        <translation>L&amp;ouder</translation>
    </message>
    <message>
        <source>&amp;Quieter</source>
        <translation>&amp;Quieter</translation>
    </message>
    <message>
        <source>&amp;Capture Picture…</source>
        <translation>&amp;Capture Picture…</translation>
    </message>
</context>
<context>
    <name>cardreel::PositionSlider</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
</context>
<context>
    <name>cardreel::ProgressSheet</name>
    <message>
        <source>%1 of %2</source>
        <comment>items</comment>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>less than a minute left</source>
        <translation>less than a minute left</translation>
    </message>
    <message numerus="yes">
        <source>about %n minute(s) left</source>
        <translation>
            <numerusform>about %n minute left</numerusform>
            <numerusform>about %n minutes left</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>&amp;Show in Folder</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Close</translation>
    </message>
</context>
<context>
    <name>cardreel::ReadoutBar</name>
    <message>
        <source>Time of day</source>
        <translation>Time of day</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Heading</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
</context>
<context>
    <name>cardreel::RecorderSettings</name>
    <message>
        <source>Recorder Settings – %1</source>
        <translation>Recorder Settings – %1</translation>
    </message>
</context>
<context>
    <name>cardreel::RecordingListModel</name>
    <message>
        <source>front</source>
        <translation>front</translation>
    </message>
    <message>
        <source>front, rear</source>
        <translation>front, rear</translation>
    </message>
    <message>
        <source>%1  ·  %2</source>
        <comment>size and cameras of a recording</comment>
        <translation>%1  ·  %2</translation>
    </message>
</context>
<context>
    <name>cardreel::ScaleBar</name>
    <message>
        <source>%1 m</source>
        <translation>%1 m</translation>
    </message>
    <message>
        <source>%1 km</source>
        <translation>%1 km</translation>
    </message>
    <message>
        <source>%1 ft</source>
        <translation>%1 ft</translation>
    </message>
    <message>
        <source>%1 mi</source>
        <translation>%1 mi</translation>
    </message>
</context>
<context>
    <name>cardreel::SettingRow</name>
    <message>
        <source>Changed; it was “%1”.</source>
        <translation>Changed; it was “%1”.</translation>
    </message>
</context>
<context>
    <name>cardreel::ShortcutsSheet</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Keyboard Shortcuts</translation>
    </message>
</context>
<context>
    <name>cardreel::StepSelector</name>
    <message>
        <source>%1: %2</source>
        <comment>a setting&apos;s name and the value of a button</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>cardreel::TransportBar</name>
    <message>
        <source>Previous recording (Page Up)</source>
        <translation>Previous recording (Page Up)</translation>
    </message>
    <message>
        <source>Play or pause (Space)</source>
        <translation>Play or pause (Space)</translation>
    </message>
    <message>
        <source>Next recording (Page Down)</source>
        <translation>Next recording (Page Down)</translation>
    </message>
    <message>
        <source>Mute (M)</source>
        <translation>Mute (M)</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>Elapsed</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Length</translation>
    </message>
    <message>
        <source>Playback rate (J slower, L faster)</source>
        <translation>Playback rate (J slower, L faster)</translation>
    </message>
    <message>
        <source>Full screen (F)</source>
        <translation>Full screen (F)</translation>
    </message>
    <message>
        <source>Leave full screen (F)</source>
        <translation>Leave full screen (F)</translation>
    </message>
</context>
<context>
    <name>cardreel::UnitSettingSheet</name>
    <message>
        <source>Writing to the card…</source>
        <translation>Writing to the card…</translation>
    </message>
    <message>
        <source>Recorder Settings</source>
        <translation>Recorder Settings</translation>
    </message>
    <message>
        <source>&amp;Reset…</source>
        <translation>&amp;Reset…</translation>
    </message>
    <message>
        <source>Back to the factory&apos;s settings; nothing is saved yet</source>
        <translation>Back to the factory&apos;s settings; nothing is saved yet</translation>
    </message>
</context>
<context>
    <name>cardreel::VolumeChooser</name>
    <message>
        <source>Recorder Settings</source>
        <translation>Recorder Settings</translation>
    </message>
    <message>
        <source>Memory &amp;card:</source>
        <translation>Memory &amp;card:</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Free</translation>
    </message>
    <message>
        <source>Memory cards</source>
        <translation>Memory cards</translation>
    </message>
    <message>
        <source>Choose &amp;Folder…</source>
        <translation>Choose &amp;Folder…</translation>
    </message>
    <message>
        <source>%1 (can only be read: settings can be looked at, but not saved)</source>
        <translation>%1 (can only be read: settings can be looked at, but not saved)</translation>
    </message>
    <message>
        <source>No memory card is in this computer. Put one in, or choose a folder.</source>
        <translation>No memory card is in this computer. Put one in, or choose a folder.</translation>
    </message>
    <message>
        <source>Choose Card</source>
        <translation>Choose Card</translation>
    </message>
</context>
<context>
    <name>cardreel::VolumeSlider</name>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
</context>
<context>
    <name>cardreel::ZoomPlayerViewController</name>
    <message>
        <source>Play rate</source>
        <translation>Play rate</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>Whole picture</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>Middle</translation>
    </message>
    <message>
        <source>Upper left quarter</source>
        <translation>Upper left quarter</translation>
    </message>
    <message>
        <source>Upper right quarter</source>
        <translation>Upper right quarter</translation>
    </message>
    <message>
        <source>Lower left quarter</source>
        <translation>Lower left quarter</translation>
    </message>
    <message>
        <source>Lower right quarter</source>
        <translation>Lower right quarter</translation>
    </message>
    <message>
        <source>Mirror</source>
        <translation>Mirror</translation>
    </message>
    <message>
        <source>Swap left and right</source>
        <translation>Swap left and right</translation>
    </message>
    <message>
        <source>This picture can&apos;t be read: %1</source>
        <translation>This picture can&apos;t be read: %1</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>Capture</translation>
    </message>
    <message>
        <source>Save this picture</source>
        <translation>Save this picture</translation>
    </message>
</context>
</TS>
