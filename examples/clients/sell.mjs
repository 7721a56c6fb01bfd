#!/usr/bin/env node
// Sells over frserver, to copy from: fetch alone, in Node 18 or a browser.
//   sell.mjs http://127.0.0.1:8403 till1 shop:2025-03-01:42 receipt.json
// The id is kept where the sale itself is kept, before the first attempt: after any failure it is the same again. Exit status
// 0 issued, 1 not issued or refused, 3 a person is needed.

import { readFile } from "node:fs/promises";
import process from "node:process";

const PATIENCE = 300_000;
const PAUSE = 2_000;

/** One attempt: status and what was said; null for an answer that is none of the service's. */
async function post(url, register, id, body, token) {
  const headers = { "Content-Type": "application/json", "Idempotency-Key": id, Prefer: "wait=30" };
  if (token) headers.Authorization = `Bearer ${token}`;
  try {
    const answer = await fetch(`${url}/v1/registers/${encodeURIComponent(register)}/documents`, {
      method: "POST",
      headers,
      body: JSON.stringify(body),
      signal: AbortSignal.timeout(45_000),
    });
    return { status: answer.status, said: await saidByService(answer) };
  } catch {
    return { status: 0, said: null };
  }
}

/** Null for what a proxy says of its own, which is no news of the document. */
async function saidByService(answer) {
  const said = await answer.json().catch(() => null);
  const isProblem = (answer.headers.get("Content-Type") ?? "").startsWith("application/problem+json");
  return isProblem || said?.state !== undefined ? said : null;
}

/** Any 5xx, time-out or answer that is not ours: the same id again; otherwise state decides. */
export async function sell(url, register, id, body, token) {
  const end = Date.now() + PATIENCE;
  while (Date.now() < end) {
    const { status, said } = await post(url, register, id, body, token);
    if (status >= 500 || status === 429 || said === null) {
      await new Promise((resolve) => setTimeout(resolve, PAUSE));
      continue;
    }
    if (said.state !== "queued" && said.state !== "running") return said;
  }
  return { state: "unknown", detail: "no answer: ask again with the same id" };
}

const [url, register, id, file] = process.argv.slice(2);
const body = JSON.parse(await readFile(file, "utf-8"));
const said = await sell(url.replace(/\/$/, ""), register, id, body, process.env.FRSERVER_TOKEN);
console.log(JSON.stringify(said));
process.exitCode = { issued: 0, unknown: 3 }[said.state] ?? 1;
