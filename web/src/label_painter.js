/** Draws the names on tiles. Text with a halo is slow, so each name is drawn once and then copied. */
import { shownText } from './label_styles.js';
import { DOT_RIM, LabelPlacement } from './label_placement.js';

const HALO = 3;
/** Pictures of names that are kept, more than the largest view has. */
const KEPT = 2500;

const ruler = () => document.createElement('canvas').getContext('2d');

function applyStyle(context, { font, spacing }) {
  context.font = font;
  context.letterSpacing = spacing;
}

export class LabelPainter {
  /** @param {import('./name_file.js').NameFile} names */
  constructor(names) {
    this.names = names;
    const context = ruler();
    this.placement = new LabelPlacement(names, (text, style) => {
      applyStyle(context, style);
      return Math.ceil(context.measureText(text).width);
    });
    this.sprites = new Map();
    this.palette = null;
  }

  /**
   * @param {CanvasRenderingContext2D} context whose units are the tile's pixels @param {object} coords of the tile
   * @param {object} palette with colours text, area and halo @param {number} density dots a pixel
   */
  paint(context, coords, palette, density) {
    if (palette !== this.palette || density !== this.density) this.sprites.clear();
    Object.assign(this, { palette, density });
    for (const { index, x, y, left, top } of this.placement.forTile(coords)) {
      const style = this.placement.style(index);
      if (style.dot > 0) this.paintDot(context, x, y, style);
      const sprite = this.sprite(index, style);
      // Whole pixels keep the text sharp.
      const [atX, atY] = [Math.round(left) - HALO, Math.round(top) - HALO];
      context.drawImage(sprite, atX, atY, sprite.width / density, sprite.height / density);
    }
  }

  paintDot(context, x, y, { dot }) {
    const { text, halo } = this.palette;
    context.beginPath();
    context.arc(x, y, dot + DOT_RIM, 0, 2 * Math.PI);
    context.fillStyle = halo;
    context.fill();
    context.beginPath();
    context.arc(x, y, dot, 0, 2 * Math.PI);
    context.fillStyle = text;
    context.fill();
  }

  sprite(index, style) {
    let sprite = this.sprites.get(index);
    if (!sprite) {
      sprite = this.drawSprite(index, style);
      if (this.sprites.size >= KEPT) this.sprites.delete(this.sprites.keys().next().value);
      this.sprites.set(index, sprite);
    }
    return sprite;
  }

  drawSprite(index, style) {
    const canvas = document.createElement('canvas');
    canvas.width = (this.placement.width(index) + 2 * HALO) * this.density;
    canvas.height = (style.height + 2 * HALO + 2) * this.density;
    const context = canvas.getContext('2d');
    context.scale(this.density, this.density);
    applyStyle(context, style);
    context.textBaseline = 'middle';
    context.lineJoin = 'round';
    context.lineWidth = 2.5;
    context.strokeStyle = this.palette.halo;
    const text = shownText(this.names.name(index), style);
    const middle = HALO + style.height / 2;
    context.strokeText(text, HALO, middle);
    context.fillStyle = this.palette[style.colour];
    context.fillText(text, HALO, middle);
    return canvas;
  }
}

