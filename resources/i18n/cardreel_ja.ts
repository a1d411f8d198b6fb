<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>CommandLine</name>
    <message>
        <source>This folder is no card of a drive recorder.</source>
        <translation>このフォルダーはドライブレコーダーのカードではありません。</translation>
    </message>
    <message>
        <source>%1 recordings, %2 pictures</source>
        <translation>録画%1件、静止画%2件</translation>
    </message>
    <message>
        <source>no position</source>
        <translation>測位なし</translation>
    </message>
    <message>
        <source>Trip</source>
        <translation>トリップ</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>Picture groups</source>
        <translation>GOP数</translation>
    </message>
    <message>
        <source>Fixes</source>
        <translation>測位数</translation>
    </message>
    <message>
        <source>%1, %2 of them valid</source>
        <translation>%1（うち有効%2）</translation>
    </message>
    <message>
        <source>G samples</source>
        <translation>Gサンプル数</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>警告数</translation>
    </message>
    <message>
        <source>Highest speed</source>
        <translation>最高速度</translation>
    </message>
    <message>
        <source>Largest G</source>
        <translation>最大G</translation>
    </message>
    <message>
        <source>would be written</source>
        <translation>書き込まれる内容</translation>
    </message>
    <message>
        <source>The folder isn&apos;t empty.</source>
        <translation>フォルダーが空ではありません。</translation>
    </message>
    <message>
        <source>There is not enough room: %1 to copy, %2 free.</source>
        <translation>空き容量が足りません: コピーに %1 必要、空き %2。</translation>
    </message>
    <message>
        <source>There is nothing to copy on this card.</source>
        <translation>このカードにはコピーするものがありません。</translation>
    </message>
    <message>
        <source>It has no rear video.</source>
        <translation>リア映像がありません。</translation>
    </message>
    <message>
        <source>It would be on the card, which is never changed.</source>
        <translation>カード上になります。カードは変更されません。</translation>
    </message>
    <message>
        <source>There are no recordings on this card.</source>
        <translation>このカードには録画がありません。</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>キャンセルしています…</translation>
    </message>
</context>
<context>
    <name>Keys</name>
    <message>
        <source>EVENT RECORD</source>
        <extracomment>イベント記録 プレースマーク名称</extracomment>
        <translation>イベント記録</translation>
    </message>
    <message>
        <source>MANUAL RECORD</source>
        <extracomment>手動記録 プレースマーク名称</extracomment>
        <translation>手動記録</translation>
    </message>
    <message>
        <source>PARKING RECORD</source>
        <extracomment>駐車記録 プレースマーク名称</extracomment>
        <translation>駐車記録</translation>
    </message>
    <message>
        <source>The video player couldn&apos;t be started.</source>
        <translation>映像プレーヤーを起動できませんでした。</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be opened.</source>
        <translation>映像「%1」を開けません。</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be decoded.</source>
        <translation>映像「%1」を復号できません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; holds no video.</source>
        <translation>「%1」には映像がありません。</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; can&apos;t be read any further.</source>
        <translation>映像「%1」の続きを読み込めません。</translation>
    </message>
    <message>
        <source>The video &quot;%1&quot; holds no picture.</source>
        <translation>映像「%1」には画像がありません。</translation>
    </message>
    <message>
        <source>発進遅れ</source>
        <translation>発進遅れ</translation>
    </message>
    <message>
        <source>左車線注意</source>
        <translation>左車線注意</translation>
    </message>
    <message>
        <source>前方衝突注意</source>
        <translation>前方衝突注意</translation>
    </message>
    <message>
        <source>EVENTNAME_NORMAL</source>
        <translation>通常</translation>
    </message>
    <message>
        <source>EVENTNAME_EVENT</source>
        <translation>イベント</translation>
    </message>
    <message>
        <source>EVENTNAME_MANUAL</source>
        <translation>手動</translation>
    </message>
    <message>
        <source>EVENTNAME_PARKING</source>
        <translation>駐車</translation>
    </message>
    <message>
        <source>発進遅れ,</source>
        <translation>発進遅れ,</translation>
    </message>
    <message>
        <source>左車線注意,</source>
        <translation>左車線注意,</translation>
    </message>
    <message>
        <source>右車線注意,</source>
        <translation>右車線注意,</translation>
    </message>
    <message>
        <source>衝突注意,</source>
        <translation>衝突注意,</translation>
    </message>
    <message>
        <source>長時間走行注意,</source>
        <translation>長時間走行注意,</translation>
    </message>
    <message>
        <source>ふらつき注意,</source>
        <translation>ふらつき注意,</translation>
    </message>
    <message>
        <source>急加速注意,</source>
        <translation>急加速注意,</translation>
    </message>
    <message>
        <source>急減速注意,</source>
        <translation>急減速注意,</translation>
    </message>
    <message>
        <source>逆走,</source>
        <translation>逆走,</translation>
    </message>
    <message>
        <source>一時停止注意,</source>
        <translation>一時停止注意,</translation>
    </message>
    <message>
        <source>歩行者衝突注意,</source>
        <translation>歩行者衝突注意,</translation>
    </message>
    <message>
        <source>急ハンドル注意,</source>
        <translation>急ハンドル注意,</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Failed to load configuration file</source>
        <translation>設定ファイルを読み込めませんでした</translation>
    </message>
    <message>
        <source>Apply the default settings</source>
        <translation>初期設定を適用します</translation>
    </message>
    <message>
        <source>The settings on the card were changed by another program. Overwrite them?</source>
        <translation>カードの設定がほかのプログラムによって変更されています。上書きしますか?</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Could not write to the configuration file</source>
        <translation>設定ファイルに書き込めませんでした</translation>
    </message>
    <message>
        <source>saved the setting</source>
        <translation>設定を保存しました</translation>
    </message>
    <message>
        <source>Save the settings?</source>
        <translation>設定を保存しますか?</translation>
    </message>
    <message>
        <source>Reset the setting to the initial value?</source>
        <translation>設定を初期値に戻しますか?</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>OFF</translation>
    </message>
    <message>
        <source>15秒間</source>
        <translation>15秒間</translation>
    </message>
    <message>
        <source>30秒間</source>
        <translation>30秒間</translation>
    </message>
    <message>
        <source>1分間</source>
        <translation>1分間</translation>
    </message>
    <message>
        <source>30秒後</source>
        <translation>30秒後</translation>
    </message>
    <message>
        <source>1分後</source>
        <translation>1分後</translation>
    </message>
    <message>
        <source>3分後</source>
        <translation>3分後</translation>
    </message>
    <message>
        <source>30秒前</source>
        <translation>30秒前</translation>
    </message>
    <message>
        <source>1分前</source>
        <translation>1分前</translation>
    </message>
    <message>
        <source>3分前</source>
        <translation>3分前</translation>
    </message>
    <message>
        <source>標準画質</source>
        <translation>標準画質</translation>
    </message>
    <message>
        <source>長時間画質</source>
        <translation>長時間画質</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>ON</translation>
    </message>
    <message>
        <source>Free size:</source>
        <translation>空き容量:</translation>
    </message>
    <message>
        <source>Required size:</source>
        <translation>必要な容量:</translation>
    </message>
    <message>
        <source>Execute</source>
        <translation>実行</translation>
    </message>
    <message>
        <source>The program csh, which starts zip, can&apos;t be started</source>
        <translation>zip を起動するプログラム csh を開始できません</translation>
    </message>
    <message>
        <source>The program zip is not installed</source>
        <translation>プログラム zip がインストールされていません</translation>
    </message>
    <message>
        <source>The archive can&apos;t be made: %@</source>
        <translation>アーカイブを作成できません: %@</translation>
    </message>
    <message>
        <source>There is no folder for caches</source>
        <translation>キャッシュ用のフォルダーがありません</translation>
    </message>
    <message>
        <source>The card is never changed; choose a place elsewhere</source>
        <translation>カードは変更されません。ほかの場所を選択してください</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>イベント</translation>
    </message>
    <message>
        <source>ROUTE</source>
        <translation>走行軌跡</translation>
    </message>
    <message>
        <source>SPD: %@ mph&lt;br&gt;</source>
        <translation>速度: %@ mph&lt;br&gt;</translation>
    </message>
    <message>
        <source>SPD: %@ km/h&lt;br&gt;</source>
        <translation>速度: %@ km/h&lt;br&gt;</translation>
    </message>
    <message>
        <source>LAT.: %1$@&lt;br&gt;LONG.: %2$@&lt;br&gt;</source>
        <translation>緯度: %1$@&lt;br&gt;経度: %2$@&lt;br&gt;</translation>
    </message>
    <message>
        <source>DATE/TIME: %@&lt;br&gt;</source>
        <translation>日時: %@&lt;br&gt;</translation>
    </message>
    <message>
        <source>EVENT: %@&lt;br&gt;</source>
        <translation>イベント: %@&lt;br&gt;</translation>
    </message>
    <message>
        <source>DIRECTION: %@ °</source>
        <translation>方位: %@ °</translation>
    </message>
    <message>
        <source>An error occurred when writing data</source>
        <translation>データの書き込み中にエラーが発生しました</translation>
    </message>
    <message>
        <source>KML/KMZ export is complete</source>
        <translation>KML/KMZ の書き出しが完了しました</translation>
    </message>
    <message>
        <source>An error occurred during backup</source>
        <translation>バックアップ中にエラーが発生しました</translation>
    </message>
    <message>
        <source>Backup is complete</source>
        <translation>バックアップが完了しました</translation>
    </message>
</context>
<context>
    <name>SettingTexts</name>
    <message>
        <source>Recording</source>
        <translation>録画</translation>
    </message>
    <message>
        <source>Video &amp;quality</source>
        <translation>画質(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Audio recording</source>
        <translation>音声記録(&amp;A)</translation>
    </message>
    <message>
        <source>Impact sensitivity while &amp;driving</source>
        <translation>走行中の衝撃感度(&amp;D)</translation>
    </message>
    <message>
        <source>Overwrite old &amp;manual recordings</source>
        <translation>古い手動録画を上書き(&amp;M)</translation>
    </message>
    <message>
        <source>Overwrite old &amp;event recordings</source>
        <translation>古いイベント録画を上書き(&amp;E)</translation>
    </message>
    <message>
        <source>Overwrite old &amp;junction recordings</source>
        <translation>古い交差点録画を上書き(&amp;J)</translation>
    </message>
    <message>
        <source>Parking</source>
        <translation>駐車</translation>
    </message>
    <message>
        <source>&amp;Parking recording</source>
        <translation>駐車録画(&amp;P)</translation>
    </message>
    <message>
        <source>Parking recording p&amp;lus</source>
        <translation>駐車録画プラス(&amp;L)</translation>
    </message>
    <message>
        <source>Len&amp;gth of parking recordings</source>
        <translation>駐車録画の長さ(&amp;G)</translation>
    </message>
    <message>
        <source>Parking recording &amp;starts</source>
        <translation>駐車録画の開始(&amp;S)</translation>
    </message>
    <message>
        <source>Parking recording e&amp;nds</source>
        <translation>駐車録画の終了(&amp;N)</translation>
    </message>
    <message>
        <source>Impact sensitivity while par&amp;ked</source>
        <translation>駐車中の衝撃感度(&amp;K)</translation>
    </message>
    <message>
        <source>Overwrite old park&amp;ing recordings</source>
        <translation>古い駐車録画を上書き(&amp;I)</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>音</translation>
    </message>
    <message>
        <source>Notification &amp;volume</source>
        <translation>通知音量(&amp;V)</translation>
    </message>
    <message>
        <source>Play&amp;back volume</source>
        <translation>再生音量(&amp;B)</translation>
    </message>
    <message>
        <source>Display and clock</source>
        <translation>表示と時計</translation>
    </message>
    <message>
        <source>&amp;Time zone</source>
        <translation>タイムゾーン(&amp;T)</translation>
    </message>
    <message>
        <source>System</source>
        <translation>システム</translation>
    </message>
    <message>
        <source>C&amp;hild lock</source>
        <translation>チャイルドロック(&amp;H)</translation>
    </message>
    <message>
        <source>Batter&amp;y connection</source>
        <translation>バッテリー接続(&amp;Y)</translation>
    </message>
    <message>
        <source>Reset the pass&amp;word</source>
        <translation>パスワードをリセット(&amp;W)</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>Unknown (%1)</source>
        <translation>不明 (%1)</translation>
    </message>
    <message>
        <source>This model&apos;s file has no place for it.</source>
        <translation>この機種の設定ファイルにはこの項目がありません。</translation>
    </message>
    <message>
        <source>Isn&apos;t saved: the card gets zero, whatever is chosen.</source>
        <translation>保存されません: 選択にかかわらずカードには 0 が書き込まれます。</translation>
    </message>
    <message>
        <source>Isn&apos;t saved: this model&apos;s file has no place for it.</source>
        <translation>保存されません: この機種の設定ファイルにはこの項目がありません。</translation>
    </message>
    <message>
        <source>Only shown. Saving sets it to zero on the card.</source>
        <translation>表示のみです。保存するとカードでは 0 になります。</translation>
    </message>
    <message>
        <source>Only shown. It stays as it is on the card.</source>
        <translation>表示のみです。カードの値はそのまま残ります。</translation>
    </message>
    <message>
        <source>No settings could be read from the card, so these are the factory&apos;s. The recorder&apos;s model isn&apos;t known: only what all models have is saved.</source>
        <translation>カードから設定を読み込めなかったため、出荷時の設定を表示しています。機種が不明なため、全機種に共通する項目だけが保存されます。</translation>
    </message>
    <message>
        <source>Model %1, read from %2.</source>
        <comment>0E00, settings.bin</comment>
        <translation>機種 %1、%2 から読み込み。</translation>
    </message>
    <message>
        <source>That is a backup, which saving removes.</source>
        <translation>これはバックアップで、保存すると削除されます。</translation>
    </message>
    <message>
        <source>The model isn&apos;t known: only what all models have is saved, and the rest of the file is lost.</source>
        <translation>機種が不明です。全機種に共通する項目だけが保存され、ファイルの残りは失われます。</translation>
    </message>
    <message>
        <source>What is saved for this model can&apos;t be opened here again.</source>
        <translation>この機種で保存したファイルは、ここでは再び開けません。</translation>
    </message>
</context>
<context>
    <name>cardreel::BackUpSheet</name>
    <message>
        <source>&amp;All pictures, and the selected recordings (%1)</source>
        <translation>すべての写真と選択した録画 (%1)(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;No pictures, only the selected recordings (%1)</source>
        <translation>写真なし、選択した録画のみ (%1)(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Only all pictures</source>
        <translation>すべての写真のみ(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Read the copies back and compare</source>
        <translation>コピーを読み戻して比較(&amp;R)</translation>
    </message>
    <message>
        <source>Back Up</source>
        <translation>バックアップ</translation>
    </message>
    <message>
        <source>Takes about twice as long</source>
        <translation>約 2 倍の時間がかかります</translation>
    </message>
    <message>
        <source>What is copied:</source>
        <translation>コピーするもの:</translation>
    </message>
    <message>
        <source>In the &amp;folder:</source>
        <translation>保存先フォルダー(&amp;F):</translation>
    </message>
    <message>
        <source>As a new folder with the na&amp;me:</source>
        <translation>新しいフォルダーの名前(&amp;M):</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>フォルダー</translation>
    </message>
    <message>
        <source>No recording is selected.</source>
        <translation>録画が選択されていません。</translation>
    </message>
    <message>
        <source>There are no pictures on this card.</source>
        <translation>このカードには写真がありません。</translation>
    </message>
    <message>
        <source>A folder&apos;s name can&apos;t hold a slash.</source>
        <translation>フォルダー名にスラッシュは使えません。</translation>
    </message>
    <message>
        <source>It must be more than the required size and 1 MiB.</source>
        <translation>必要な容量に 1 MiB を加えたより多くの空きが必要です。</translation>
    </message>
    <message>
        <source>Choose the Folder for the Backup</source>
        <translation>バックアップ先フォルダーの選択</translation>
    </message>
    <message>
        <source>“%1” is there already and isn&apos;t empty. Back up into it?</source>
        <translation>「%1」はすでにあり、空ではありません。ここにバックアップしますか?</translation>
    </message>
    <message>
        <source>If the backup fails or is cancelled, the whole folder is removed with everything that is in it, also what was there before.</source>
        <translation>バックアップに失敗するかキャンセルすると、以前からあったものも含めてフォルダー全体が削除されます。</translation>
    </message>
    <message>
        <source>&amp;Use This Folder</source>
        <translation>このフォルダーを使う(&amp;U)</translation>
    </message>
    <message>
        <source>%1 of %2 recordings are selected; Ctrl+A in the list selects all.</source>
        <translation>録画 %2 件中 %1 件を選択中です。リストで Ctrl+A を押すとすべて選択できます。</translation>
    </message>
</context>
<context>
    <name>cardreel::CapturePanel</name>
    <message>
        <source>Capture Picture</source>
        <translation>静止画の保存</translation>
    </message>
    <message>
        <source>JPEG picture (*.jpg *.jpeg)</source>
        <translation>JPEG 画像 (*.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>PNG picture, without the place (*.png)</source>
        <translation>PNG 画像、位置情報なし (*.png)</translation>
    </message>
    <message>
        <source>The card is never changed.</source>
        <translation>カードは変更されません。</translation>
    </message>
    <message>
        <source>Choose a folder that isn&apos;t on the card.</source>
        <translation>カード以外のフォルダーを選択してください。</translation>
    </message>
    <message>
        <source>The new picture would take its place.</source>
        <translation>新しい画像に置き換えられます。</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>置き換える</translation>
    </message>
    <message>
        <source>There is no picture at this moment of the video.</source>
        <translation>映像のこの時点には画像がありません。</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>%1 に保存しました</translation>
    </message>
    <message>
        <source>The picture couldn&apos;t be saved.</source>
        <translation>画像を保存できませんでした。</translation>
    </message>
    <message>
        <source>“%1” is there already.</source>
        <translation>「%1」はすでにあります。</translation>
    </message>
</context>
<context>
    <name>cardreel::CardApplication</name>
    <message>
        <source>Open Card</source>
        <translation>カードを開く</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>このフォルダーはありません。</translation>
    </message>
    <message>
        <source>It is a file. Choose the folder that holds the recordings&apos; folders.</source>
        <translation>これはファイルです。録画のフォルダーが入っているフォルダーを選んでください。</translation>
    </message>
    <message>
        <source>It holds none of the folders that a recorder makes: NORMAL, EVENT, MANUAL, PARKING, PICTURE or REAR. Choose the folder that they are in.</source>
        <translation>レコーダーが作るフォルダー（NORMAL、EVENT、MANUAL、PARKING、PICTURE、REAR）がありません。これらが入っているフォルダーを選んでください。</translation>
    </message>
    <message>
        <source>No card</source>
        <translation>カードではありません</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be opened as a card.</source>
        <translation>「%1」はカードとして開けません。</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>一覧を消去(&amp;C)</translation>
    </message>
    <message>
        <source>It can&apos;t be read: you may lack the permission.</source>
        <translation>読み込めません。アクセス権がない可能性があります。</translation>
    </message>
    <message>
        <source>&amp;Stop and Quit</source>
        <translation>中止して終了(&amp;S)</translation>
    </message>
</context>
<context>
    <name>cardreel::CardChip</name>
    <message>
        <source>%1 free</source>
        <translation>空き %1</translation>
    </message>
    <message>
        <source>No card</source>
        <translation>カードなし</translation>
    </message>
</context>
<context>
    <name>cardreel::CardJobs</name>
    <message>
        <source>&amp;Export Route…</source>
        <translation>軌跡を書き出す(&amp;E)…</translation>
    </message>
    <message>
        <source>&amp;Back Up…</source>
        <translation>バックアップ(&amp;B)…</translation>
    </message>
    <message>
        <source>Export the route to a file (Ctrl+E)</source>
        <translation>走行軌跡をファイルに書き出します (Ctrl+E)</translation>
    </message>
    <message>
        <source>Copy recordings and pictures to another disk (Ctrl+B)</source>
        <translation>録画と写真をほかのディスクにコピーします (Ctrl+B)</translation>
    </message>
    <message>
        <source>Exporting to “%1”</source>
        <translation>「%1」に書き出し中</translation>
    </message>
    <message>
        <source>Backing up to “%1”</source>
        <translation>「%1」にバックアップ中</translation>
    </message>
    <message>
        <source>&amp;Stop and Close</source>
        <translation>中止して閉じる(&amp;S)</translation>
    </message>
    <message numerus="yes">
        <source>%n export(s) and backup(s) are running.</source>
        <translation>
            <numerusform>書き出しまたはバックアップを %n 件実行中です。</numerusform>
        </translation>
    </message>
    <message>
        <source>If you stop them, what is unfinished is removed.</source>
        <translation>中止すると、未完了のものは削除されます。</translation>
    </message>
    <message>
        <source>A backup is running.</source>
        <translation>バックアップを実行中です。</translation>
    </message>
    <message>
        <source>If you stop it, its folder is removed with everything in it.</source>
        <translation>中止すると、そのフォルダーは中身ごと削除されます。</translation>
    </message>
    <message>
        <source>An export is running.</source>
        <translation>書き出しを実行中です。</translation>
    </message>
    <message>
        <source>If you stop it, no file is written.</source>
        <translation>中止すると、ファイルは書き込まれません。</translation>
    </message>
    <message>
        <source>&amp;Keep Running</source>
        <translation>続ける(&amp;K)</translation>
    </message>
</context>
<context>
    <name>cardreel::CustomMapCalloutView</name>
    <message>
        <source>Show Recording</source>
        <translation>この録画を表示</translation>
    </message>
    <message>
        <source>Present position</source>
        <translation>現在位置</translation>
    </message>
</context>
<context>
    <name>cardreel::DCFAsyncBackUp</name>
    <message numerus="yes">
        <source>%n file(s) weren&apos;t on the card any more and are not in the backup.</source>
        <translation>
            <numerusform>%n 個のファイルはカード上になくなっていたため、バックアップに含まれていません。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>cardreel::ExportSheet</name>
    <message>
        <source>As KML, but in a much smaller file.</source>
        <translation>KML と同じ内容で、ファイルがずっと小さくなります。</translation>
    </message>
    <message>
        <source>Tracks and waypoints, for navigation programs.</source>
        <translation>ナビゲーションソフト向けの軌跡と地点です。</translation>
    </message>
    <message>
        <source>Routes by day and events, for globes and map programs.</source>
        <translation>地球儀・地図ソフト向けの、日ごとの軌跡とイベントです。</translation>
    </message>
    <message>
        <source>&amp;Selected recordings (%1)</source>
        <translation>選択した録画 (%1)(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;All recordings (%1)</source>
        <translation>すべての録画 (%1)(&amp;A)</translation>
    </message>
    <message>
        <source>Export Route</source>
        <translation>走行軌跡の書き出し</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>書き出す(&amp;E)</translation>
    </message>
    <message>
        <source>Recordings:</source>
        <translation>録画:</translation>
    </message>
    <message>
        <source>&amp;Format:</source>
        <translation>形式(&amp;F):</translation>
    </message>
    <message>
        <source>Fi&amp;le:</source>
        <translation>ファイル(&amp;L):</translation>
    </message>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Route</source>
        <translation>軌跡</translation>
    </message>
    <message>
        <source>“%1” is there already. Replace it?</source>
        <translation>「%1」はすでにあります。置き換えますか?</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>置き換える(&amp;R)</translation>
    </message>
</context>
<context>
    <name>cardreel::FileError</name>
    <message>
        <source>The card is gone</source>
        <translation>カードがありません</translation>
    </message>
    <message>
        <source>The backup and the card lie within each other</source>
        <translation>バックアップ先とカードが互いに含まれています</translation>
    </message>
    <message>
        <source>Another backup is still at work there</source>
        <translation>そこではほかのバックアップがまだ実行中です</translation>
    </message>
    <message>
        <source>There is no picture to write</source>
        <translation>書き込む画像がありません</translation>
    </message>
    <message>
        <source>Pictures are written as jpg, jpeg or png</source>
        <translation>画像は jpg、jpeg、png で保存されます</translation>
    </message>
    <message>
        <source>Not a regular file</source>
        <translation>通常のファイルではありません</translation>
    </message>
    <message>
        <source>Its length changed while it was copied</source>
        <translation>コピー中に長さが変わりました</translation>
    </message>
    <message>
        <source>The copy isn&apos;t as long as its source</source>
        <translation>コピーの長さが元のファイルと異なります</translation>
    </message>
    <message>
        <source>The copy doesn&apos;t read back as its source</source>
        <translation>読み戻したコピーが元のファイルと一致しません</translation>
    </message>
    <message>
        <source>It is a link, which may lead to a card</source>
        <translation>リンクのため、カードを指している可能性があります</translation>
    </message>
</context>
<context>
    <name>cardreel::GraphLayerView</name>
    <message>
        <source>speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>SPEED(mph)</source>
        <translation>速度(mph)</translation>
    </message>
    <message>
        <source>SPEED(km/h)</source>
        <translation>速度(km/h)</translation>
    </message>
    <message>
        <source>ACCELERATION(G)</source>
        <translation>加速度(G)</translation>
    </message>
</context>
<context>
    <name>cardreel::GraphViewController</name>
    <message>
        <source>Speed and acceleration</source>
        <translation>速度と加速度</translation>
    </message>
    <message>
        <source>Curves of the whole recording, and the figures of the moment. Click or drag on the curves to go there.</source>
        <translation>録画全体の曲線と、現在の値です。曲線をクリックまたはドラッグすると、その時点へ移動します。</translation>
    </message>
    <message>
        <source>No recording is shown.</source>
        <translation>録画が選択されていません。</translation>
    </message>
    <message>
        <source>Reading telemetry…</source>
        <translation>走行データを読み込み中…</translation>
    </message>
    <message>
        <source>This recording has no telemetry.</source>
        <translation>この録画には走行データがありません。</translation>
    </message>
</context>
<context>
    <name>cardreel::LeadButton</name>
    <message>
        <source>Lead other windows</source>
        <translation>ほかのウインドウを先導</translation>
    </message>
    <message>
        <source>The other windows show the same time of day as this one</source>
        <translation>ほかのウインドウがこのウインドウと同じ時刻を表示します</translation>
    </message>
</context>
<context>
    <name>cardreel::LibraryPanel</name>
    <message>
        <source>Recordings</source>
        <translation>録画</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>イベント</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>静止画</translation>
    </message>
    <message>
        <source>This card holds no recordings.</source>
        <translation>このカードには録画がありません。</translation>
    </message>
    <message>
        <source>No event, manual or parking recordings on this card.</source>
        <translation>このカードにはイベント・手動・駐車の録画がありません。</translation>
    </message>
    <message>
        <source>This card holds no pictures.</source>
        <translation>このカードには静止画がありません。</translation>
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
        <translation>ドライブレコーダーのカードを開く</translation>
    </message>
    <message>
        <source>Choose the card or a folder copied from one, or drop it here.</source>
        <translation>カード、またはカードからコピーしたフォルダーを選ぶか、ここにドロップしてください。</translation>
    </message>
    <message>
        <source>Open card…</source>
        <translation>カードを開く…</translation>
    </message>
    <message>
        <source>Open a card (Ctrl+O)</source>
        <translation>カードを開く (Ctrl+O)</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>前</translation>
    </message>
    <message>
        <source>Rear</source>
        <translation>後</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>開く(&amp;O)…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>最近使ったカード(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>ウインドウを閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>再生(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About Cardreel</source>
        <translation>Cardreelについて(&amp;A)</translation>
    </message>
    <message>
        <source>About Cardreel</source>
        <translation>Cardreelについて</translation>
    </message>
    <message>
        <source>Cardreel %1
Reviews the memory cards of vehicle drive recorders.</source>
        <translation>Cardreel %1
ドライブレコーダーのメモリーカードを再生・確認します。</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>外観(&amp;A)</translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation>デスクトップに合わせる(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>ダーク(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>ライト(&amp;L)</translation>
    </message>
    <message>
        <source>%1 – Cardreel</source>
        <translation>%1 – Cardreel</translation>
    </message>
    <message numerus="yes">
        <source>%n recording(s)</source>
        <translation>
            <numerusform>録画%n件</numerusform>
        </translation>
    </message>
    <message>
        <source>There is nothing to play on this card.</source>
        <translation>このカードには再生できるものがありません。</translation>
    </message>
    <message>
        <source>Reading telemetry %1 of %2</source>
        <translation>走行データを読み込み中 %1／%2</translation>
    </message>
    <message>
        <source>The card has been removed. Put it back to go on.</source>
        <translation>カードが取り外されました。元に戻すと続けられます。</translation>
    </message>
    <message>
        <source>Synchronization canceled.</source>
        <translation>同期を解除しました。</translation>
    </message>
    <message>
        <source>Select the media to play or synchronize.</source>
        <translation>再生または同期するメディアを選択してください。</translation>
    </message>
    <message>
        <source>&amp;New Window</source>
        <translation>新規ウインドウ(&amp;N)</translation>
    </message>
    <message>
        <source>Re&amp;cordings</source>
        <translation>録画(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Events</source>
        <translation>イベント(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Pictures</source>
        <translation>静止画(&amp;P)</translation>
    </message>
    <message>
        <source>Rear Ca&amp;mera</source>
        <translation>リアカメラ(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>ズーム(&amp;Z)</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>フルスクリーン(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Leave Full Screen</source>
        <translation>フルスクリーンを終了(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>キーボードショートカット(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Map</source>
        <translation>地図(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Graph</source>
        <translation>グラフ(&amp;G)</translation>
    </message>
    <message>
        <source>M&amp;ap</source>
        <translation>地図(&amp;A)</translation>
    </message>
    <message>
        <source>S&amp;wap Graph and Map</source>
        <translation>グラフと地図を入れ替え(&amp;W)</translation>
    </message>
    <message>
        <source>Recorder settings…</source>
        <translation>本体設定…</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>ツール(&amp;T)</translation>
    </message>
    <message>
        <source>Recorder &amp;settings…</source>
        <translation>本体設定(&amp;S)…</translation>
    </message>
    <message>
        <source>Settings of another &amp;card…</source>
        <translation>ほかのカードの設定(&amp;C)…</translation>
    </message>
    <message>
        <source>Export route…</source>
        <translation>軌跡を書き出す…</translation>
    </message>
    <message>
        <source>Back up…</source>
        <translation>バックアップ…</translation>
    </message>
</context>
<context>
    <name>cardreel::MapActions</name>
    <message>
        <source>&amp;Routes</source>
        <translation>走行軌跡(&amp;R)</translation>
    </message>
    <message>
        <source>Re&amp;cordings</source>
        <translation>録画(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Events</source>
        <translation>イベント(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Position</source>
        <translation>現在位置(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Follow Position</source>
        <translation>現在位置を追う(&amp;F)</translation>
    </message>
    <message>
        <source>Map &amp;Background…</source>
        <translation>地図の背景(&amp;B)…</translation>
    </message>
    <message>
        <source>Zoom Map &amp;In</source>
        <translation>地図を拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom Map &amp;Out</source>
        <translation>地図を縮小(&amp;O)</translation>
    </message>
    <message>
        <source>Show &amp;All Routes</source>
        <translation>すべての軌跡を表示(&amp;A)</translation>
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
        <translation>ネットワーク上の OpenStreetMap(&amp;O)</translation>
    </message>
    <message>
        <source>Another tile &amp;server</source>
        <translation>ほかのタイルサーバー(&amp;S)</translation>
    </message>
    <message>
        <source>Tiles on this &amp;computer</source>
        <translation>このコンピューターのタイル(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Nothing: only a grid of degrees</source>
        <translation>なし: 経緯線のみ(&amp;N)</translation>
    </message>
    <message>
        <source>Map Background</source>
        <translation>地図の背景</translation>
    </message>
    <message>
        <source>Address, with {z}, {x} and {y}:</source>
        <translation>アドレス ({z}、{x}、{y} を含む):</translation>
    </message>
    <message>
        <source>Shown on the map as its source:</source>
        <translation>地図に表示する出典:</translation>
    </message>
    <message>
        <source>An MBTiles file, or a folder with z/x/y.png:</source>
        <translation>MBTiles ファイル、または z/x/y.png のフォルダー:</translation>
    </message>
    <message>
        <source>Choose &amp;File…</source>
        <translation>ファイルを選択(&amp;F)…</translation>
    </message>
    <message>
        <source>Choose Fol&amp;der…</source>
        <translation>フォルダーを選択(&amp;D)…</translation>
    </message>
    <message>
        <source>Choose Tiles</source>
        <translation>タイルの選択</translation>
    </message>
    <message>
        <source>Choose an MBTiles File</source>
        <translation>MBTiles ファイルの選択</translation>
    </message>
    <message>
        <source>MBTiles (*.mbtiles)</source>
        <translation>MBTiles (*.mbtiles)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>すべてのファイル (*)</translation>
    </message>
</context>
<context>
    <name>cardreel::MapControls</name>
    <message>
        <source>Map Menu</source>
        <translation>地図のメニュー</translation>
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
        <translation>方位 %1°</translation>
    </message>
    <message>
        <source>No signal between %1 and %2</source>
        <translation>%1 から %2 まで受信なし</translation>
    </message>
    <message>
        <source>%1  ·  %2</source>
        <comment>time and speed</comment>
        <translation>%1  ·  %2</translation>
    </message>
    <message>
        <source>No GPS position at this moment.</source>
        <translation>この時点の GPS 位置はありません。</translation>
    </message>
</context>
<context>
    <name>cardreel::MapVewController</name>
    <message>
        <source>Map</source>
        <translation>地図</translation>
    </message>
</context>
<context>
    <name>cardreel::MapView</name>
    <message>
        <source>Map</source>
        <translation>地図</translation>
    </message>
    <message>
        <source>The map server can&apos;t be reached. Routes are shown without a map.</source>
        <translation>地図サーバーに接続できません。軌跡のみを表示しています。</translation>
    </message>
    <message>
        <source>The map&apos;s tiles can&apos;t be read. Routes are shown without a map.</source>
        <translation>地図のタイルを読み込めません。軌跡のみを表示しています。</translation>
    </message>
</context>
<context>
    <name>cardreel::MediaController</name>
    <message>
        <source>The file wasn&apos;t written: %1</source>
        <translation>ファイルは書き込まれませんでした: %1</translation>
    </message>
</context>
<context>
    <name>cardreel::MomentDisplay</name>
    <message>
        <source>This recording has no rear video.</source>
        <translation>この録画には後方の映像がありません。</translation>
    </message>
    <message>
        <source>Reading telemetry…</source>
        <translation>走行データを読み込み中…</translation>
    </message>
    <message>
        <source>No GPS position at this moment.</source>
        <translation>この時点のGPS位置はありません。</translation>
    </message>
    <message>
        <source>This picture carries no position.</source>
        <translation>この静止画には位置情報がありません。</translation>
    </message>
</context>
<context>
    <name>cardreel::NeedleView</name>
    <message>
        <source>Speedometer</source>
        <translation>速度計</translation>
    </message>
</context>
<context>
    <name>cardreel::PaneControls</name>
    <message>
        <source>Zoomed freely</source>
        <translation>任意の拡大</translation>
    </message>
</context>
<context>
    <name>cardreel::PathField</name>
    <message>
        <source>&amp;Browse…</source>
        <translation>参照(&amp;B)…</translation>
    </message>
</context>
<context>
    <name>cardreel::PictureListModel</name>
    <message>
        <source>%1  ·  with position</source>
        <translation>%1  ·  位置情報あり</translation>
    </message>
</context>
<context>
    <name>cardreel::PlaceTexts</name>
    <message>
        <source>There is no folder “%1”.</source>
        <translation>フォルダー「%1」はありません。</translation>
    </message>
    <message>
        <source>“%1” is no folder.</source>
        <translation>「%1」はフォルダーではありません。</translation>
    </message>
    <message>
        <source>You may not write to the folder “%1”.</source>
        <translation>フォルダー「%1」に書き込む権限がありません。</translation>
    </message>
    <message>
        <source>That is on the card, which is never changed. Choose another folder.</source>
        <translation>カード上の場所です。カードは変更されません。ほかのフォルダーを選択してください。</translation>
    </message>
    <message>
        <source>“%1” is a folder.</source>
        <translation>「%1」はフォルダーです。</translation>
    </message>
    <message>
        <source>A folder can&apos;t have this name.</source>
        <translation>この名前のフォルダーは作成できません。</translation>
    </message>
    <message>
        <source>The backup and the card would lie within each other. Choose another folder.</source>
        <translation>バックアップ先とカードが互いに含まれています。ほかのフォルダーを選択してください。</translation>
    </message>
    <message>
        <source>There is a file of the name “%1”.</source>
        <translation>「%1」という名前のファイルがあります。</translation>
    </message>
</context>
<context>
    <name>cardreel::PlaybackActions</name>
    <message>
        <source>&amp;Play or Pause</source>
        <translation>再生／一時停止(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Faster</source>
        <translation>速く(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Slower</source>
        <translation>遅く(&amp;S)</translation>
    </message>
    <message>
        <source>5 Seconds &amp;Back</source>
        <translation>5秒戻る(&amp;B)</translation>
    </message>
    <message>
        <source>5 Seconds For&amp;ward</source>
        <translation>5秒進む(&amp;W)</translation>
    </message>
    <message>
        <source>1 Second Back</source>
        <translation>1秒戻る</translation>
    </message>
    <message>
        <source>1 Second Forward</source>
        <translation>1秒進む</translation>
    </message>
    <message>
        <source>Previous F&amp;rame</source>
        <translation>前のフレーム(&amp;R)</translation>
    </message>
    <message>
        <source>Next Fra&amp;me</source>
        <translation>次のフレーム(&amp;M)</translation>
    </message>
    <message>
        <source>Be&amp;ginning of the Recording</source>
        <translation>録画の先頭(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;End of the Recording</source>
        <translation>録画の末尾(&amp;E)</translation>
    </message>
    <message>
        <source>Pre&amp;vious Recording</source>
        <translation>前の録画(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Next Recording</source>
        <translation>次の録画(&amp;N)</translation>
    </message>
    <message>
        <source>M&amp;ute</source>
        <translation>消音(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Whole Picture</source>
        <translation>全体(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Middle</source>
        <translation>中央(&amp;M)</translation>
    </message>
    <message>
        <source>Upper &amp;Left Quarter</source>
        <translation>左上(&amp;L)</translation>
    </message>
    <message>
        <source>Upper &amp;Right Quarter</source>
        <translation>右上(&amp;R)</translation>
    </message>
    <message>
        <source>Lower L&amp;eft Quarter</source>
        <translation>左下(&amp;E)</translation>
    </message>
    <message>
        <source>Lower Ri&amp;ght Quarter</source>
        <translation>右下(&amp;G)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>Mirror Left to Righ&amp;t</source>
        <translation>左右反転(&amp;T)</translation>
    </message>
    <message>
        <source>Reset &amp;Zoom</source>
        <translation>ズームを戻す(&amp;Z)</translation>
    </message>
    <message>
        <source>L&amp;ouder</source>
        <translation>音量を上げる(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Quieter</source>
        <translation>音量を下げる(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Capture Picture…</source>
        <translation>静止画を保存(&amp;C)…</translation>
    </message>
</context>
<context>
    <name>cardreel::PositionSlider</name>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
</context>
<context>
    <name>cardreel::ProgressSheet</name>
    <message>
        <source>%1 of %2</source>
        <comment>items</comment>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>less than a minute left</source>
        <translation>残り 1 分未満</translation>
    </message>
    <message numerus="yes">
        <source>about %n minute(s) left</source>
        <translation>
            <numerusform>残り約 %n 分</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>フォルダーに表示(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>閉じる(&amp;C)</translation>
    </message>
</context>
<context>
    <name>cardreel::ReadoutBar</name>
    <message>
        <source>Time of day</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>方位</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
</context>
<context>
    <name>cardreel::RecorderSettings</name>
    <message>
        <source>Recorder Settings – %1</source>
        <translation>本体設定 – %1</translation>
    </message>
</context>
<context>
    <name>cardreel::RecordingListModel</name>
    <message>
        <source>front</source>
        <translation>前</translation>
    </message>
    <message>
        <source>front, rear</source>
        <translation>前・後</translation>
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
        <translation>変更済み。元の値は「%1」。</translation>
    </message>
</context>
<context>
    <name>cardreel::ShortcutsSheet</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>キーボードショートカット</translation>
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
        <translation>前の録画 (Page Up)</translation>
    </message>
    <message>
        <source>Play or pause (Space)</source>
        <translation>再生／一時停止 (Space)</translation>
    </message>
    <message>
        <source>Next recording (Page Down)</source>
        <translation>次の録画 (Page Down)</translation>
    </message>
    <message>
        <source>Mute (M)</source>
        <translation>消音 (M)</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>経過時間</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>長さ</translation>
    </message>
    <message>
        <source>Playback rate (J slower, L faster)</source>
        <translation>再生速度（J：遅く、L：速く）</translation>
    </message>
    <message>
        <source>Full screen (F)</source>
        <translation>フルスクリーン (F)</translation>
    </message>
    <message>
        <source>Leave full screen (F)</source>
        <translation>フルスクリーンを終了 (F)</translation>
    </message>
</context>
<context>
    <name>cardreel::UnitSettingSheet</name>
    <message>
        <source>Writing to the card…</source>
        <translation>カードに書き込み中…</translation>
    </message>
    <message>
        <source>Recorder Settings</source>
        <translation>本体設定</translation>
    </message>
    <message>
        <source>&amp;Reset…</source>
        <translation>初期値に戻す(&amp;R)…</translation>
    </message>
    <message>
        <source>Back to the factory&apos;s settings; nothing is saved yet</source>
        <translation>出荷時の設定に戻します。保存はまだ行われません</translation>
    </message>
</context>
<context>
    <name>cardreel::VolumeChooser</name>
    <message>
        <source>Recorder Settings</source>
        <translation>本体設定</translation>
    </message>
    <message>
        <source>Memory &amp;card:</source>
        <translation>メモリーカード(&amp;C):</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>容量</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>空き</translation>
    </message>
    <message>
        <source>Memory cards</source>
        <translation>メモリーカード</translation>
    </message>
    <message>
        <source>Choose &amp;Folder…</source>
        <translation>フォルダーを選択(&amp;F)…</translation>
    </message>
    <message>
        <source>%1 (can only be read: settings can be looked at, but not saved)</source>
        <translation>%1 (読み取り専用: 設定は確認できますが、保存できません)</translation>
    </message>
    <message>
        <source>No memory card is in this computer. Put one in, or choose a folder.</source>
        <translation>メモリーカードが見つかりません。カードを挿入するか、フォルダーを選択してください。</translation>
    </message>
    <message>
        <source>Choose Card</source>
        <translation>カードの選択</translation>
    </message>
</context>
<context>
    <name>cardreel::VolumeSlider</name>
    <message>
        <source>Volume</source>
        <translation>音量</translation>
    </message>
</context>
<context>
    <name>cardreel::ZoomPlayerViewController</name>
    <message>
        <source>Play rate</source>
        <translation>再生速度</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>全体</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>中央</translation>
    </message>
    <message>
        <source>Upper left quarter</source>
        <translation>左上</translation>
    </message>
    <message>
        <source>Upper right quarter</source>
        <translation>右上</translation>
    </message>
    <message>
        <source>Lower left quarter</source>
        <translation>左下</translation>
    </message>
    <message>
        <source>Lower right quarter</source>
        <translation>右下</translation>
    </message>
    <message>
        <source>Mirror</source>
        <translation>左右反転</translation>
    </message>
    <message>
        <source>Swap left and right</source>
        <translation>左右を入れ替える</translation>
    </message>
    <message>
        <source>This picture can&apos;t be read: %1</source>
        <translation>この静止画を読み込めません：%1</translation>
    </message>
    <message>
        <source>Capture</source>
        <translation>静止画の保存</translation>
    </message>
    <message>
        <source>Save this picture</source>
        <translation>この画像を保存</translation>
    </message>
</context>
</TS>
