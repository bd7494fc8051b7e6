import QtQuick
import QtTest
import Tavrin.Theme

Item {
    id: page

    readonly property string files: Qt.resolvedUrl("fixtures/").toString()

    width: 400
    height: 300

    RowIcon { id: picture; url: page.files + "picture.png"; preferThumbnail: true; size: 64 }
    RowIcon { id: icon; url: page.files + "picture.png"; size: 64; x: 80 }
    RowIcon { id: broken; url: page.files + "notes.txt"; preferThumbnail: true; size: 64; x: 160 }

    TestCase {
        name: "RowIcon"
        when: windowShown

        function test_aPictureShowsItselfWhereThatIsWanted() {
            tryVerify(() => picture.showsThumbnail)
            verify(!icon.showsThumbnail)
        }

        function test_whatIsNoPictureKeepsItsIcon() {
            tryVerify(() => picture.showsThumbnail)
            verify(!broken.showsThumbnail)
        }

        function test_eachKindOfFileHasASymbolWhereTheDesktopHasNoIcon_data() {
            return [{ tag: "file:///a/b.png", symbol: "photo" }, { tag: "file:///a/b.mp3", symbol: "music.note" },
                    { tag: "file:///a/b.mp4", symbol: "film" }, { tag: "file:///a/b.txt", symbol: "doc.text" },
                    { tag: "file:///a/b.zip", symbol: "doc.zipper" }, { tag: "file:///a/b.app/", symbol: "app" },
                    { tag: "file:///a/b/", symbol: "folder.fill" }, { tag: "file:///a/%FF", symbol: "doc" },
                    { tag: "no address", symbol: "doc" }]
        }

        function test_eachKindOfFileHasASymbolWhereTheDesktopHasNoIcon(row) {
            compare(FileImages.symbol(row.tag), row.symbol)
        }
    }
}
