"""The apps that this home's owner uses. All of them are invented, but for the system's own."""

# Bundle identifier, name.
APPS = (
    ("org.papermill.Writer", "Papermill"),
    ("org.papermill.Sheets", "Papermill Sheets"),
    ("net.tidepool.Sailor", "Sailor"),
    ("net.tidepool.Sailor.helper", "Sailor Helper"),
    ("io.quince.Sketchbook", "Sketchbook"),
    ("io.quince.Palette", "Palette"),
    ("com.northgate.Ledger", "Ledger"),
    ("com.northgate.Invoices", "Invoices"),
    ("com.lanternfish.Player", "Lanternfish"),
    ("com.lanternfish.Recorder", "Recorder"),
    ("de.wolkenbruch.Wetter", "Wolkenbruch"),
    ("de.wolkenbruch.Karten", "Karten"),
    ("es.cometa.Diario", "Diario"),
    ("es.cometa.Recetas", "Recetas"),
    ("fr.atelierbleu.Pinceau", "Pinceau"),
    ("jp.hoshizora.Kanji", "Hoshizora"),
    ("org.opentrail.Hiker", "Hiker"),
    ("org.opentrail.MapTiles", "Map Tiles"),
    ("app.mosaic.Photos", "Mosaic"),
    ("app.mosaic.Collage", "Collage"),
    ("dev.brickyard.Terminal", "Brickyard"),
    ("dev.brickyard.Containers", "Brickyard Containers"),
    ("com.hummingbird.Chat", "Hummingbird"),
    ("com.hummingbird.Calls", "Hummingbird Calls"),
    ("co.pebble.Reader", "Pebble"),
    ("co.pebble.Feeds", "Pebble Feeds"),
    ("edu.oakfield.Stats", "Oakfield"),
    ("tv.balcony.Watch", "Balcony"),
)

SYSTEM_PARTS = (
    "com.apple.Safari",
    "com.apple.Spotlight",
    "com.apple.helpd",
    "com.apple.iCloudHelper",
    "com.apple.nsurlsessiond",
    "com.apple.parsecd",
    "com.apple.commerce",
    "com.apple.appstore",
    "com.apple.python",
    "com.apple.proactive.eventtracker",
    "CloudKit",
    "GeoServices",
    "FamilyCircle",
    "PassKit",
    "knowledge-agent",
)

PROJECTS = ("Sailor", "Ledger", "HarbourMap", "TinyParser", "Weather-Station", "Old Homework")
DEVICES = ("iPhone14,5 17.2 (21C62)", "iPhone14,5 17.4.1 (21E236)", "iPad13,1 16.6 (20G75)", "Watch6,1 10.1 (21S67)")
