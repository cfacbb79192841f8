/** What lies at a place, as a text for people. */
import { NameGrid } from './name_grid.js';
import { positionText } from '../base/positions.js';
import { worldX, worldY } from '../base/earth.js';

const EARTH_RADIUS_MILES = 3958.8;
/** Nearer than this a place's own name says enough, miles. */
const AT_THE_PLACE = 0.1;
const WINDS = 'N NNE NE ENE E ESE SE SSE S SSW SW WSW W WNW NW NNW'.split(' ');
const DESCRIBING = new Set(['capital', 'city', 'town', 'village']);
const GRID_LEVEL = 9;

const radians = (degrees) => (degrees * Math.PI) / 180;

/** @returns {number} miles along the great circle between two positions in degrees */
export function milesBetween(fromLatitude, fromLongitude, toLatitude, toLongitude) {
  const north = Math.sin(radians(toLatitude - fromLatitude) / 2) ** 2;
  const east = Math.sin(radians(toLongitude - fromLongitude) / 2) ** 2;
  const chord = north + Math.cos(radians(fromLatitude)) * Math.cos(radians(toLatitude)) * east;
  return 2 * EARTH_RADIUS_MILES * Math.asin(Math.min(1, Math.sqrt(chord)));
}

/** @returns {string} the wind towards which one sets out from the one position to the other, degrees */
export function windTowards(fromLatitude, fromLongitude, toLatitude, toLongitude) {
  const [from, to] = [radians(fromLatitude), radians(toLatitude)];
  const east = radians(toLongitude - fromLongitude);
  const bearing = Math.atan2(
    Math.sin(east) * Math.cos(to),
    Math.cos(from) * Math.sin(to) - Math.sin(from) * Math.cos(to) * Math.cos(east),
  );
  return WINDS[(Math.round((bearing / (2 * Math.PI)) * WINDS.length) + WINDS.length) % WINDS.length];
}

function distanceText(miles) {
  return `${miles < 9.95 ? miles.toFixed(1) : Math.round(miles)} mi`;
}

/** Knows the places by name, and so what lies near a position. */
export class PlaceFinder {
  /** @param {import('./name_file.js').NameFile} names */
  constructor(names) {
    this.names = names;
    this.grid = new NameGrid(names, GRID_LEVEL, (index) => DESCRIBING.has(names.kindOf(index)));
  }

  /**
   * @param {number} latitude degrees @param {number} longitude degrees
   * @returns {{name: string, region: string, miles: number, latitude: number, longitude: number}|null}
   */
  nearest(latitude, longitude) {
    const [x, y] = [worldX(longitude), worldY(latitude)];
    // A circle on the ground is one on this map too, as long as it is small: 1.5 covers the rest.
    for (let reach = 1 / 2 ** GRID_LEVEL; reach < 2; reach *= 2) {
      const across = Math.min(reach, 0.5);
      const box = { left: x - across, right: x + across, top: y - reach, bottom: y + reach };
      const found = this.nearestWithin(box, latitude, longitude);
      const sure = (reach / 1.5) * 2 * Math.PI * EARTH_RADIUS_MILES * Math.cos(radians(latitude));
      if (found && (found.miles <= sure || reach >= 1)) return found;
    }
    return null;
  }

  nearestWithin(box, latitude, longitude) {
    let best = null;
    this.grid.visit(box, (index) => {
      const place = {
        index,
        latitude: latitudeOf(this.names.worldY(index)),
        longitude: (this.names.worldX(index) - 0.5) * 360,
      };
      place.miles = milesBetween(latitude, longitude, place.latitude, place.longitude);
      if (!best || place.miles < best.miles) best = place;
    });
    if (!best) return null;
    return { ...best, name: this.names.name(best.index), region: this.names.regionOf(best.index) };
  }

  /** @returns {string} "2.3 mi NE of Bethlehem, PA", or the position where there is no place */
  describe(latitude, longitude) {
    const place = this.nearest(latitude, longitude);
    if (!place) return positionText(latitude, longitude);
    const name = [place.name, place.region].filter((text) => text !== '').join(', ');
    if (place.miles < AT_THE_PLACE) return name;
    const wind = windTowards(place.latitude, place.longitude, latitude, longitude);
    return `${distanceText(place.miles)} ${wind} of ${name}`;
  }
}

function latitudeOf(y) {
  return (Math.atan(Math.sinh(Math.PI * (1 - 2 * y))) * 180) / Math.PI;
}
