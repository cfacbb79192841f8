/**
 * The file of names on the map, which the build makes and the page loads: countries, states, counties and
 * places, the most important first. Its columns are used as they lie in the file; a name becomes a text only
 * when it is wanted.
 *
 * Layout: the head's length (4 bytes), the head (JSON, filled up with spaces to a multiple of 4), then one
 * column after the other, the largest numbers first, then the names in UTF-8.
 */

/** How a name is shown, and whether it is a place that others may be described by. */
export const KINDS = ['country', 'state', 'county', 'capital', 'city', 'town', 'village', 'quarter'];

/** Steps across the world: one is a centimetre at the equator. */
const STEPS = 2 ** 32;

const COLUMNS = [
  ['x', Uint32Array],
  ['y', Uint32Array],
  ['region', Uint16Array],
  ['minZoom', Uint8Array],
  ['maxZoom', Uint8Array],
  ['kind', Uint8Array],
  ['length', Uint8Array],
];

function aligned(length) {
  return Math.ceil(length / 4) * 4;
}

/**
 * @param {{x: number, y: number, region: string, minZoom: number, maxZoom: number, kind: string, name:
 *     string}[]} entries the most important first; x and y on the unit world; a name has at most 255 bytes
 * @returns {Uint8Array} the file's content
 */
export function encodeNames(entries) {
  const encoder = new TextEncoder();
  const names = entries.map(({ name }) => encoder.encode(name));
  const regions = [...new Set(entries.map(({ region }) => region))];
  const regionIndex = new Map(regions.map((region, index) => [region, index]));
  const head = encoder.encode(JSON.stringify({ count: entries.length, regions }));
  const value = {
    x: ({ x }) => Math.round(x * STEPS),
    y: ({ y }) => Math.round(y * STEPS),
    region: ({ region }) => regionIndex.get(region),
    minZoom: ({ minZoom }) => minZoom,
    maxZoom: ({ maxZoom }) => maxZoom,
    kind: ({ kind }) => KINDS.indexOf(kind),
    length: (_, index) => names[index].length,
  };
  const columns = COLUMNS.map(([key, Type]) => new Uint8Array(Type.from(entries, value[key]).buffer));
  const headLength = aligned(head.length);
  const size = [...columns, ...names].reduce((sum, { length }) => sum + aligned(length), 4 + headLength);
  const bytes = new Uint8Array(size);
  new DataView(bytes.buffer).setUint32(0, headLength, true);
  bytes.fill(0x20, 4, 4 + headLength);
  bytes.set(head, 4);
  let at = 4 + headLength;
  for (const column of columns) {
    bytes.set(column, at);
    at += aligned(column.length);
  }
  for (const name of names) {
    bytes.set(name, at);
    at += name.length;
  }
  return bytes.slice(0, at);
}

export class NameFile {
  /** @param {ArrayBuffer} buffer the file's content */
  constructor(buffer) {
    const headLength = new DataView(buffer).getUint32(0, true);
    const head = JSON.parse(new TextDecoder().decode(new Uint8Array(buffer, 4, headLength)));
    /** How many names there are. */
    this.count = head.count;
    this.regions = head.regions;
    let at = 4 + headLength;
    for (const [key, Type] of COLUMNS) {
      this[key] = new Type(buffer, at, this.count);
      at += aligned(this.count * Type.BYTES_PER_ELEMENT);
    }
    this.names = new Uint8Array(buffer, at);
    this.starts = new Uint32Array(this.count + 1);
    for (let index = 0; index < this.count; index += 1) {
      this.starts[index + 1] = this.starts[index] + this.length[index];
    }
    if (this.starts[this.count] > this.names.length) throw new RangeError('the file of names is cut short');
    this.decoder = new TextDecoder();
  }

  /** The place of a name on the unit world. */
  worldX(index) {
    return this.x[index] / STEPS;
  }

  worldY(index) {
    return this.y[index] / STEPS;
  }

  kindOf(index) {
    return KINDS[this.kind[index]];
  }

  name(index) {
    return this.decoder.decode(this.names.subarray(this.starts[index], this.starts[index + 1]));
  }

  /** The state or country that a place lies in: "PA", "South Africa"; empty where that is not known. */
  regionOf(index) {
    return this.regions[this.region[index]];
  }
}
