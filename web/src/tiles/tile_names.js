/** Names of the client's tiles: 4 digits generation, 2 zoom, 6 column, 6 row, all upper-case hexadecimal. */

const TILE_FILE = /^([0-9A-F]{4})([0-9A-F]{14})\.png$/i;

function hex(value, digits) {
  return value.toString(16).toUpperCase().padStart(digits, '0').slice(-digits);
}

/** The 14 digits by which the page asks for a tile; column and row count from the north-west corner. */
export function tileSuffix(zoom, column, row) {
  return hex(zoom, 2) + hex(column, 6) + hex(row, 6);
}

/** The last part of a path with separators of either kind. */
export function fileNameOf(path) {
  return path.slice(Math.max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
}

/**
 * What a tile answer names.
 * @param {string} fileName
 * @returns {{generation: string, suffix: string}|null} null for a placeholder image
 */
export function parseTileFile(fileName) {
  const parts = TILE_FILE.exec(fileName);
  return parts && { generation: parts[1].toUpperCase(), suffix: parts[2].toUpperCase() };
}

/** @returns {boolean} the answer says that there is nothing on the tile */
export function isBlank(fileName) {
  return fileName.toLowerCase() === 'blank_x.png';
}

/** The address at which the client serves a tile or a placeholder image to this page. */
export function tileUrl(fileName) {
  return 'tile:///' + encodeURIComponent(fileName);
}
