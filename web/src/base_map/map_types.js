/**
 * The four map types: what each shows, in colours quiet enough for the black, white, red, blue, green and
 * magenta of the tracks. A type with pictures has colours for land and water too, until the pictures are
 * there.
 */

const FROM_ABOVE = {
  pictures: { land: 'land', sea: 'sea' },
  note: 'This picture shows nothing smaller than 10 km.',
  water: '#48688a',
  land: '#7c7f74',
  lake: '#4f7292',
  river: null,
  coast: null,
  dark: true,
};

export const MAP_TYPES = {
  Map: {
    water: '#cbdfeb',
    land: '#f5f2ea',
    lake: '#cbdfeb',
    river: '#bcd4e4',
    coast: '#8fb0c4',
    border: '#9a8c9c',
    state: '#c4b7c2',
    county: '#e1d9d3',
    graticule: 'rgba(70, 95, 120, 0.16)',
    label: '#5d7183',
    ground: '#f8f8f6',
    text: '#3d4650',
    area: '#8d8192',
    halo: 'rgba(255, 255, 255, 0.85)',
    dark: false,
  },
  Satellite: {
    ...FROM_ABOVE,
    border: 'rgba(255, 255, 255, 0.28)',
    state: 'rgba(255, 255, 255, 0.16)',
    county: null,
    graticule: 'rgba(220, 235, 245, 0.12)',
    label: null,
    text: null,
  },
  Hybrid: {
    ...FROM_ABOVE,
    border: 'rgba(255, 255, 255, 0.6)',
    state: 'rgba(255, 255, 255, 0.38)',
    county: 'rgba(255, 255, 255, 0.18)',
    graticule: 'rgba(220, 235, 245, 0.2)',
    label: '#e6edf1',
    ground: '#20292f',
    text: '#ffffff',
    area: '#e7e3d2',
    halo: 'rgba(32, 42, 48, 0.75)',
  },
  Terrain: {
    pictures: { land: 'relief' },
    note: 'This relief shows nothing smaller than 20 km.',
    water: '#c3d9e2',
    land: '#e9e3cb',
    lake: '#c3d9e2',
    river: '#b3cdd8',
    coast: '#93a9ab',
    border: '#917a66',
    state: '#bda98d',
    county: '#d8cbb0',
    graticule: 'rgba(90, 85, 60, 0.16)',
    label: '#77694e',
    ground: '#faf7ec',
    text: '#4a4234',
    area: '#8c7a5c',
    halo: 'rgba(255, 252, 243, 0.8)',
    dark: false,
  },
};
