/**
 * Whole numbers as bytes, small ones short: seven bits a byte, the lowest first, the top bit says "goes on".
 */

/** More bytes than a number of 32 bits can take mean that the file is damaged. */
const LONGEST = 5;

export class ByteWriter {
  constructor() {
    this.bytes = [];
  }

  /** @param {number} value 0 to 2³² − 1 */
  unsigned(value) {
    let rest = value >>> 0;
    for (; rest > 0x7f; rest >>>= 7) this.bytes.push((rest & 0x7f) | 0x80);
    this.bytes.push(rest);
  }

  /** @param {number} value −2³¹ to 2³¹ − 1; small ones are short on both sides of zero */
  signed(value) {
    this.unsigned((value << 1) ^ (value >> 31));
  }

  append(bytes) {
    for (const byte of bytes) this.bytes.push(byte);
  }

  toBytes() {
    return Uint8Array.from(this.bytes);
  }
}

export class ByteReader {
  /**
   * @param {Uint8Array} bytes
   * @param {number} at where reading starts
   * @param {number} end where it must stop
   */
  constructor(bytes, at = 0, end = bytes.length) {
    this.bytes = bytes;
    this.at = at;
    this.end = Math.min(end, bytes.length);
  }

  unsigned() {
    let value = 0;
    for (let count = 0; count < LONGEST; count += 1) {
      if (this.at >= this.end) break;
      const byte = this.bytes[this.at++];
      value |= (byte & 0x7f) << (7 * count);
      if (byte < 0x80) return value >>> 0;
    }
    throw new RangeError('the file ends within a number');
  }

  signed() {
    const value = this.unsigned();
    return (value >>> 1) ^ -(value & 1);
  }
}
