/** Pairs of numbers that follow one another: places, points, rows of a table. */
export function pairs(...numbers) {
  return numbers.flatMap((number, at) => (at % 2 === 0 ? [[number, numbers[at + 1]]] : []));
}
