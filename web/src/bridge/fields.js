/**
 * Reading of the texts that the client writes into the page's fields. A text of another form gives null.
 *
 * | field | what the client writes |
 * | --- | --- |
 * | TxtX, TxtY | width and height, pixels: parseViewWidth(), parseViewHeight() |
 * | TxtF, TxtL | zoom and centre to show: parseFit() |
 * | TxtP | centre to show: parseCentre() |
 * | TxtR | new generation of the track tiles |
 * | TxtTT, TxtTZ | path of the track or zone tile that was asked for |
 * | TxtM, TxtT, TxtZ, TxtSV, txtPn | a layer or panel is on or off: parseSwitch() |
 * | TxtMT | name of the map type |
 * | TxtG | what lies at the clicked place is asked |
 * | TxtZL | "*": the list of zones begins anew; then a write for each zone: parseZone() |
 * | TxtZD | after the list, names of zones in its order: parseZoneNames(); further writes go on from there |
 * | TxtZN | " ": drawing of a new zone begins |
 * | TxtZE | editing of a zone of the list begins: parseOrdinal() |
 * | TxtZF, TxtZC | " ": the shape is to be sent, or dropped |
 * | TxtZU | " ": the last step of the drawing is taken back (Ctrl+Z) |
 * | TxtZX | the crosshair moves (arrow keys): parseCrosshairMove() |
 * | TxtZV | Enter: " " sets, takes up or puts down a corner at the crosshair; "A", with Alt, without snapping.
 *           Without a crosshair, and at a closed end, it finishes as TxtZF does |
 */

const FIT = /^(\d{2})([+-]\d{3}\.\d{6})([+-]\d{3}\.\d{6})$/;
const CENTRE = /^([+-]\d{3}\.\d{6})([+-]\d{3}\.\d{6})$/;
const GENERATION = /^[0-9A-F]{4}$/;
const LARGEST_VIEW = 16384;

/**
 * By this much the room that the client shows is larger than the size that it names. The map fills the room:
 * nothing shows beside it, and its middle is the one that the client reckons with.
 */
const UNNAMED = { width: 3, height: 5 };
const VERTEX_LENGTH = 23;
const COORDINATE = /^ *-?\d{3}\.\d{6}$/;
const ORDINAL = /^\d{1,9}$/;
const STEP = /^([+-]\d{4})([+-]\d{4})$/;
const ZONE_NAME = /^(\d+(?:\.\d+)*)(?: (.*))?$/;

function position(latitudeText, longitudeText) {
  const latitude = Number(latitudeText);
  const longitude = Number(longitudeText);
  const onEarth = Math.abs(latitude) <= 90 && Math.abs(longitude) <= 180;
  return onEarth ? { latitude, longitude } : null;
}

/** "17+040.712800-074.006000" → { zoom, latitude, longitude }; the zoom may be above what a map can show. */
export function parseFit(text) {
  const parts = FIT.exec(text);
  const centre = parts && position(parts[2], parts[3]);
  return centre && { zoom: Number(parts[1]), ...centre };
}

/** "+040.712800-074.006000" → { latitude, longitude } */
export function parseCentre(text) {
  const parts = CENTRE.exec(text);
  return parts && position(parts[1], parts[2]);
}

/** The width of the room for the map, pixels: "1259" → 1262 */
export function parseViewWidth(text) {
  return parseViewLength(text, UNNAMED.width);
}

/** The height of the room for the map, pixels: "700" → 705 */
export function parseViewHeight(text) {
  return parseViewLength(text, UNNAMED.height);
}

function parseViewLength(text, unnamed) {
  if (!/^\d{1,5}$/.test(text)) return null;
  const length = Number(text);
  return length >= 1 && length <= LARGEST_VIEW ? length + unnamed : null;
}

/** The tile generation: "002A" → "002A" */
export function parseGeneration(text) {
  return GENERATION.test(text) ? text : null;
}

/** "T" or "True" → true, "F" or "False" → false */
export function parseSwitch(text) {
  if (text === 'T' || text === 'True') return true;
  if (text === 'F' || text === 'False') return false;
  return null;
}

/**
 * One zone of the zone list: an alert flag, "T" and two numbers of 11 characters a vertex, a closing "F".
 * @returns {{alert: boolean, vertices: number[][]}|null} vertices as [latitude, longitude] in degrees
 */
export function parseZone(text) {
  const flag = text[0];
  const body = text.slice(1, -1);
  if ((flag !== 'T' && flag !== 'F') || text.length < 2 || !text.endsWith('F')) return null;
  if (body.length % VERTEX_LENGTH !== 0) return null;
  const vertices = [];
  for (let at = 0; at < body.length; at += VERTEX_LENGTH) {
    const vertex = parseVertex(body.slice(at, at + VERTEX_LENGTH));
    if (!vertex) return null;
    vertices.push(vertex);
  }
  return { alert: flag === 'T', vertices };
}

function parseVertex(text) {
  const latitude = text.slice(1, 12);
  const longitude = text.slice(12);
  if (text[0] !== 'T' || !COORDINATE.test(latitude) || !COORDINATE.test(longitude)) return null;
  const place = position(latitude, longitude);
  return place && [place.latitude, place.longitude];
}

/** Which zone of the list: "12" → 12, the first is 0. */
export function parseOrdinal(text) {
  return ORDINAL.test(text) ? Number(text) : null;
}

/**
 * A move of the crosshair by which zones are drawn with the keyboard: "+0010-0001" → { dx: 10, dy: -1 } in
 * pixels, to the right and down; "N" and "P" → { corner: 1 } and { corner: -1 }, on to the next or the
 * previous corner of the outline.
 */
export function parseCrosshairMove(text) {
  if (text === 'N') return { corner: 1 };
  if (text === 'P') return { corner: -1 };
  const parts = STEP.exec(text);
  return parts && { dx: Number(parts[1]), dy: Number(parts[2]) };
}

/**
 * The names of some zones, a line each: "1.2 Loading bay". A line of another form keeps its place as null.
 * @returns {({section: string, description: string}|null)[]}
 */
export function parseZoneNames(text) {
  const lines = text.endsWith('\n') ? text.slice(0, -1).split('\n') : text.split('\n');
  return lines.map((line) => {
    const parts = ZONE_NAME.exec(line);
    return parts && { section: parts[1], description: parts[2] ?? '' };
  });
}

/** Acts on what one of the functions above has read; a text of another form is left out. */
export function whenRead(value, act) {
  if (value === null) console.error('a field holds a text of another form');
  else act(value);
}
