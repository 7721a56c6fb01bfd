// Pictures of the interface. An <img> cannot send a token, so they are fetched; the last ones are kept.

const KEPT = 60;

export class Pictures {
    constructor(api) {
        this.api = api;
        this.urls = new Map();
    }

    // Fills the <img> once the picture is there, unless the list has let the <img> go by then.
    async show(image, path) {
        const known = this.urls.get(path);
        if (known)
            return this.#put(image, path, known);
        await new Promise(requestAnimationFrame);
        if (!image.isConnected)
            return null;
        const url = URL.createObjectURL(await this.api.blob(path));
        return this.#put(image, path, url);
    }

    clear() {
        this.urls.forEach((url) => URL.revokeObjectURL(url));
        this.urls.clear();
    }

    // The one used last is the last to go.
    #put(image, path, url) {
        this.urls.delete(path);
        this.urls.set(path, url);
        const [oldest] = this.urls.keys();
        if (this.urls.size > KEPT) {
            URL.revokeObjectURL(this.urls.get(oldest));
            this.urls.delete(oldest);
        }
        image.src = url;
    }
}
