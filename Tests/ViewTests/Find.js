// Finds what is on a screen as a screen reader does: by role and name.
.pragma library

function walk(item, visit) {
    if (!item || item.visible === false) return
    visit(item)
    const children = item.children ?? []
    for (let i = 0; i < children.length; ++i) walk(children[i], visit)
}

/// Everything visible below `item` for which `wanted` holds, in the order in which it was made.
function all(item, wanted) {
    const found = []
    walk(item, child => { if (wanted(child)) found.push(child) })
    return found
}

/// The first thing visible below `item` whose text or name is this.
function named(item, name) {
    return all(item, child => child.name === name || child.text === name)[0] ?? null
}

/// Something that can be pressed, with this text or name.
function button(item, name) {
    return all(item, child => typeof child.clicked === "function" && (child.text === name || child.name === name))[0] ?? null
}

/// Whether somewhere below `item` this text stands.
function says(item, text) {
    return all(item, child => child.text === text).length > 0
}
