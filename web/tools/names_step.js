/** Makes the file of names: which there are, how important each is, and from which zoom on it has room. */
import { encodeNames } from '../src/labels/name_file.js';
import { worldX, worldY } from '../src/base/earth.js';
import { ringsOf } from '../src/base_map/world_shapes.js';

const TILE_SIZE = 256;
/** The last zoom at which places are still left out for want of room. */
const LAST_THINNED_ZOOM = 12;
const LAST_ZOOM = 22;

/** Below these populations a place is not named at a zoom, however empty the country around it. */
const LEAST_POPULATION = {
  2: 2e6,
  3: 1e6,
  4: 3e5,
  5: 1e5,
  6: 4e4,
  7: 1.2e4,
  8: 5e3,
  9: 1500,
  10: 600,
  11: 300,
  12: 1,
};
/** Two named places lie at least so far apart, pixels; more from side to side, since names are wide. */
const ROOM = { across: 96, down: 50 };
/** A place so many times as large as a zoom asks for is content with this part of the room. */
const LARGE = { times: 10, room: 0.45 };
/** A place left out for want of room leaves nothing around it to those so many times smaller. */
const SHADOW = { times: 2.5, room: 0.6 };

/** Parts of a town, and places that are gone or have no people of their own, describe nothing. */
const QUARTERS = new Set(['PPLX', 'PPLQ', 'PPLH', 'PPLW', 'PPLCH', 'PPLL']);
/** What a seat of government counts for, as a factor on its population. */
const SEATS = { PPLC: 3, PPLA: 1.5 };

function weightOf({ featureCode, population }) {
  const part = QUARTERS.has(featureCode) ? 0.05 : 1;
  return population * part * (SEATS[featureCode] ?? 1);
}

function kindOf({ featureCode, population }) {
  if (featureCode === 'PPLC') return 'capital';
  if (QUARTERS.has(featureCode)) return 'quarter';
  if (population >= 100000) return 'city';
  return population >= 10000 ? 'town' : 'village';
}

/** Hamlets with no known population are kept only where they are the seat of something. */
function isWanted({ population, featureCode, name }) {
  if (new TextEncoder().encode(name).length > 80 || !/\p{Script=Latin}/u.test(name)) return false;
  return population >= 500 || (/^PPL[AC]/.test(featureCode) && featureCode !== 'PPLA4');
}

/** What lies around each point of a set, by cells of one size. */
class Cells {
  constructor(width, height) {
    this.width = width;
    this.height = height;
    this.cells = new Map();
  }

  add(place) {
    const key = `${Math.floor(place.x / this.width)}/${Math.floor(place.y / this.height)}`;
    if (!this.cells.has(key)) this.cells.set(key, []);
    this.cells.get(key).push(place);
  }

  /** Whether one that counts lies within a part, at most 1, of a cell's size. */
  hasNear({ x, y }, part, counts = () => true) {
    const column = Math.floor(x / this.width);
    const row = Math.floor(y / this.height);
    const isNear = (other) =>
      ((other.x - x) / this.width) ** 2 + ((other.y - y) / this.height) ** 2 < part ** 2;
    for (let right = -1; right <= 1; right += 1) {
      for (let down = -1; down <= 1; down += 1) {
        const cell = this.cells.get(`${column + right}/${row + down}`) ?? [];
        if (cell.some((other) => isNear(other) && counts(other))) return true;
      }
    }
    return false;
  }
}

/**
 * Gives each place the first zoom at which there is room for it beside the more important ones.
 * @param {{x: number, y: number, weight: number}[]} places the most important first; gains minZoom
 */
export function thinOut(places) {
  let left = places;
  for (let zoom = 2; zoom <= LAST_THINNED_ZOOM; zoom += 1) {
    const scale = TILE_SIZE * 2 ** zoom;
    const taken = new Cells(ROOM.across / scale, ROOM.down / scale);
    const leftOut = new Cells(ROOM.across / scale, ROOM.down / scale);
    places.filter(({ minZoom }) => minZoom < zoom).forEach((place) => taken.add(place));
    const rest = [];
    for (const place of left) {
      const isLarge = place.weight > LARGE.times * LEAST_POPULATION[zoom];
      const isSmallFor = (other) => other.weight > SHADOW.times * place.weight;
      if (place.weight < LEAST_POPULATION[zoom]) {
        rest.push(place);
      } else if (
        taken.hasNear(place, isLarge ? LARGE.room : 1) ||
        leftOut.hasNear(place, SHADOW.room, isSmallFor)
      ) {
        rest.push(place);
        leftOut.add(place);
      } else {
        place.minZoom = zoom;
        taken.add(place);
      }
    }
    left = rest;
  }
  left.forEach((place) => (place.minZoom = LAST_THINNED_ZOOM + 1));
}

function places(cities) {
  const countryName = new Intl.DisplayNames(['en'], { type: 'region' });
  const all = cities.filter(isWanted).map((city) => ({
    name: city.name,
    // The codes of other countries' provinces are numbers that nobody knows.
    region: city.country === 'US' ? city.adminCode : countryName.of(city.country),
    kind: kindOf(city),
    weight: weightOf(city),
    x: worldX(city.loc.coordinates[0]),
    y: worldY(city.loc.coordinates[1]),
    minZoom: Infinity,
    maxZoom: LAST_ZOOM,
  }));
  all.sort((a, b) => b.weight - a.weight);
  thinOut(all);
  return all;
}

/** The middle and the size of a ring: its centre of gravity and its area on the unit world. */
function middleOf({ points }) {
  let area = 0;
  let x = 0;
  let y = 0;
  for (let at = 0; at < points.length; at += 2) {
    const next = (at + 2) % points.length;
    const cross = points[at] * points[next + 1] - points[next] * points[at + 1];
    area += cross / 2;
    x += ((points[at] + points[next]) * cross) / 6;
    y += ((points[at + 1] + points[next + 1]) * cross) / 6;
  }
  return { area: Math.abs(area), x: x / area, y: y / area };
}

/** The atlas shortens long names. */
const ABBREVIATIONS = {
  'Br.': 'British',
  'Fr.': 'French',
  'Rep.': 'Republic',
  'Eq.': 'Equatorial',
  'Herz.': 'Herzegovina',
  'Is.': 'Islands',
  'S.': 'South',
  'N.': 'Northern',
  'W.': 'Western',
  'Ter.': 'Territories',
};

function unabbreviated(name) {
  if (name === 'Dem. Rep. Congo') return 'DR Congo';
  return name.replace(/(?<![.\w])[A-Z][a-z]*\.(?!\w)/g, (word) => ABBREVIATIONS[word] ?? word);
}

/**
 * The names of areas. One is shown while the area is wide enough to hold it and not much wider than a view.
 * @param {object} topojson the library @param {string} kind
 * @param {{least: number, most: number, last: number}} limits widths in pixels, and the last zoom
 */
function areas(topojson, topology, object, kind, { least, most, last }) {
  const { features } = topojson.feature(topology, topology.objects[object]);
  const named = features.filter(({ geometry, properties }) => geometry && properties.name);
  const entries = named.map(({ geometry, properties }) => {
    const name = unabbreviated(properties.name);
    const middle = ringsOf(geometry)
      .map(middleOf)
      .reduce((a, b) => (a.area >= b.area ? a : b));
    const width = TILE_SIZE * Math.sqrt(middle.area);
    const zoomFor = (pixels) => Math.ceil(Math.log2(pixels / width));
    const wide = least + name.length * 4;
    return {
      name,
      kind,
      region: '',
      weight: middle.area,
      x: ((middle.x % 1) + 1) % 1,
      y: middle.y,
      minZoom: Math.max(2, zoomFor(wide)),
      maxZoom: Math.min(last, zoomFor(most)),
    };
  });
  return entries
    .filter(({ minZoom, maxZoom, y }) => minZoom <= maxZoom && y > 0 && y < 1)
    .sort((a, b) => b.weight - a.weight);
}

/** @returns {Uint8Array} the file's content */
export function nameFile(topojson, { rough, states, counties }, cities) {
  const named = places(cities);
  const firstSmall = named.findIndex(({ weight }) => weight < 400000);
  return encodeNames([
    ...areas(topojson, rough, 'countries', 'country', { least: 34, most: 1500, last: 7 }),
    ...named.slice(0, firstSmall),
    ...areas(topojson, states, 'states', 'state', { least: 40, most: 1100, last: 9 }),
    ...named.slice(firstSmall),
    ...areas(topojson, counties, 'counties', 'county', { least: 110, most: 1600, last: 12 }),
  ]);
}
