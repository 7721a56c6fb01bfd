// Where a document is posted to, as one word: the name of a register, or "pool:NAME". Names have no colon.

import { poolName } from "./labels.js";

const POOL = "pool:";

export const placeOfPool = (name) => POOL + name;
const poolOf = (place) => (place.startsWith(POOL) ? place.slice(POOL.length) : null);

// {register: NAME} or {pool: NAME}.
export function placeQuery(place) {
    const pool = poolOf(place);
    return pool === null ? { register: place } : { pool };
}

export function documentsPath(place) {
    const pool = poolOf(place);
    return pool === null ? `/registers/${encodeURIComponent(place)}/documents` : `/pools/${encodeURIComponent(pool)}/documents`;
}

// As people call it.
export const placeName = (place) => (poolOf(place) === null ? place : poolName(poolOf(place)));
// Where a document is; one in a pool is none of a register's yet.
export const documentPlaceName = ({ register, pool }) => register || (pool ? poolName(pool) : "");
